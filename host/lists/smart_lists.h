#pragma once

#include <map>
#include <string>

#include "automation/collection.h"
#include "host/app/session_context.h"
#include "host/lists/smart_list.h"
#include "host/lists/smart_list_schema.h"

namespace refhost {

/// `App.Modules.Quillmere.Smartlists`: lists of records with the fields that modules add.
class SmartLists : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "SmartLists";
    const Members& members() const override;

    explicit SmartLists(SharedContext context);
    /// The fields of "donors", "donations" or "pledges"; error 5 for another name.
    Ref<SmartListType> type(const std::string& name) const;
    void LoadTypes(); ///< Asks the modules for their fields, anew.
    /// Asks the modules for the columns of a list type.
    Ref<qmevents::Collection> GetColumns(const std::string& listType) const;
    /// What lists of the type can show, with what the modules offer now. Error 70 without the right
    /// to lists of the type, as for all that follows.
    Ref<SmartListSchema> GetSchema(const std::string& listType);

    Ref<qmevents::Collection> Lists() const;                ///< The saved lists, by name.
    Ref<SmartList> GetList(std::int32_t id) const;          ///< Nothing when there is none.
    Ref<SmartList> GetNewList(const std::string& listType); ///< Shows what new lists show.
    /// Who changed or deleted a list since it was read, in words; empty when nobody did.
    std::string ChangedMeanwhile(const Ref<SmartList>& list) const;
    /// Saves the list under its name. False when the user was told why not: a name that is missing
    /// or taken, or somebody else's changes, which `overwrite` disregards. Error 70 without the
    /// right to change records.
    bool Save(const Ref<SmartList>& list, bool overwrite);
    void Delete(std::int32_t id) const;
    /// Reads the list; values that are wrong are told by the result.
    Ref<SmartListResult> Run(const Ref<SmartList>& list);
    /// The records of a saved list, as what may follow "SELECT Id FROM " in a statement of either
    /// dialect; they stay the same for a day. Error 5 when there is no such list, when a value of a
    /// filter is wrong or a filter had to be left out.
    std::string Source(std::int32_t listId);
    /// Sets one of the four periods that lists count by; blank days unset it. False when the user
    /// was told what is wrong. Error 70 without the right to settings.
    bool SetPeriod(std::int32_t period, const std::string& first, const std::string& last) const;

private:
    ListSchema& schemaOf(const std::string& listType);
    ListSchema loadedSchema(const ListType& type) const;
    ListReading read(const ListDefinition& definition);
    void nameParts(ListDefinition& definition);
    std::string shownPath(const std::string& path) const;
    void require(const std::string& right, const char* what) const;
    bool refuse(const std::string& text) const;

    SharedContext context_;
    Ref<qmevents::Collection> types_ = qmevents::makeRef<qmevents::Collection>();
    bool areTypesLoaded_ = false;
    std::vector<std::string> loadFaults_;
    std::map<std::string, ListSchema> schemas_; // by type, as asked for last
};

} // namespace refhost
