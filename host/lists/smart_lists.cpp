#include "host/lists/smart_lists.h"

#include "automation/date.h"
#include "automation/describe.h"
#include "host/document/objects/document.h"
#include "host/lists/builder_file.h"
#include "host/lists/list_periods.h"
#include "host/lists/list_runs.h"
#include "host/lists/list_store.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::Date;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;
using qmevents::optional;

const Members& SmartLists::members() const
{
    static const Members table =
        describe<SmartLists>("Lists of records with the fields that modules add.")
            .readOnly("types", &SmartLists::type, {arg("Name")},
                      "The fields of \"donors\", \"donations\" or \"pledges\".")
            .method("LoadTypes", &SmartLists::LoadTypes, "Asks the modules for their fields.")
            .method("GetColumns", &SmartLists::GetColumns, {arg("ListType")},
                    "Asks the modules for the columns of a list type.")
            .method("GetSchema", &SmartLists::GetSchema, {arg("ListType")},
                    "What lists of a type can show and be filtered by.")
            .readOnly("Lists", &SmartLists::Lists, "The saved lists, by name.")
            .method("GetList", &SmartLists::GetList, {arg("Id")}, "A saved list, or Nothing.")
            .method("GetNewList", &SmartLists::GetNewList, {arg("ListType")},
                    "A new list that holds all records.")
            .method("ChangedMeanwhile", &SmartLists::ChangedMeanwhile, {arg("List")},
                    "Who changed or deleted a list since it was read, in words; empty when "
                    "nobody did.")
            .method("Save", &SmartLists::Save, {arg("List"), optional("Overwrite", false)},
                    "Saves a list under its name; False when the user was told why not.")
            .method("Delete", &SmartLists::Delete, {arg("Id")}, "Deletes a saved list.")
            .method("Run", &SmartLists::Run, {arg("List")}, "Reads a list.")
            .method("Source", &SmartLists::Source, {arg("ListId")},
                    "The records of a saved list: what may follow \"SELECT Id FROM \".")
            .method("SetPeriod", &SmartLists::SetPeriod, {arg("Period"), arg("First"), arg("Last")},
                    "Sets one of the four periods that lists count by, days as \"2026-03-07\"; "
                    "False when the user was told what is wrong.");
    return table;
}

SmartLists::SmartLists(SharedContext context) : context_(std::move(context))
{
    for (const ListType& known : listTypes()) {
        types_->append(Value(makeRef<SmartListType>(known.name)), known.name);
    }
}

Ref<SmartListType> SmartLists::type(const std::string& name) const
{
    return qmevents::refCast<SmartListType>(
        types_->at(std::string_view(listType(name).name)).object());
}

// --- What modules offer

void SmartLists::LoadTypes()
{
    for (const ListType& known : listTypes()) type(known.name)->files.clear();
    schemas_.clear();
    areTypesLoaded_ = true;
    context_->raise("smartlist-loadtypes", {});
    context_->raise("smartlist-modifytypes", {});
}

Ref<Collection> SmartLists::GetColumns(const std::string& listType) const
{
    const auto payload = makeRef<SmartListColumns>(listType);
    context_->raise("smartlist-columns", Value(payload));
    return payload->Columns;
}

std::string SmartLists::shownPath(const std::string& path) const
{
    const std::string plain = qmevents::text::replaceAll(path, "\\", "/");
    const std::string base = qmevents::text::replaceAll(context_->addInPath, "\\", "/");
    return plain.starts_with(base) ? plain.substr(base.size()) : plain;
}

ListSchema SmartLists::loadedSchema(const ListType& listType) const
{
    std::vector<std::string> warnings = loadFaults_;
    std::vector<ListOffer> offers;
    const auto readFiles = [&](const std::string& name) {
        for (const auto& file : type(name)->files) {
            BuilderFile read = readBuilderFile(file.path, shownPath(file.path), name);
            warnings.insert(warnings.end(), read.faults.begin(), read.faults.end());
            offers.push_back(std::move(read.offer));
        }
    };
    readFiles(listType.builder);
    if (listType.name != std::string_view(listType.builder)) readFiles(listType.name);

    std::vector<OfferedColumn> columns;
    try {
        Value item;
        for (const auto walk = GetColumns(listType.name)->NewEnum(); walk->next(item);) {
            const auto column = qmevents::refCast<SmartListColumn>(qmevents::toObject(item));
            if (!column) continue;
            columns.push_back({column->ModuleId, column->Caption, column->DataField,
                               column->Operation, column->Width, column->Visible});
        }
    } catch (const Error& error) {
        warnings.push_back("The columns of the modules could not be read: " + error.description());
    }
    ListSchema schema = makeSchema(listType, context_->sql().dialect(), offers, columns);
    schema.warnings.insert(schema.warnings.begin(), warnings.begin(), warnings.end());
    return schema;
}

ListSchema& SmartLists::schemaOf(const std::string& name)
{
    const ListType& known = listType(name);
    require(known.operation, "see gifts");
    if (!areTypesLoaded_) {
        loadFaults_.clear();
        try {
            LoadTypes();
        } catch (const Error& error) {
            loadFaults_.push_back("The fields of the modules could not be read: " +
                                  error.description());
        }
    }
    const auto found = schemas_.find(known.name);
    if (found != schemas_.end()) return found->second;
    return schemas_.emplace(known.name, loadedSchema(known)).first->second;
}

Ref<SmartListSchema> SmartLists::GetSchema(const std::string& listType)
{
    areTypesLoaded_ = false; // files may have been mended since
    return makeRef<SmartListSchema>(context_, schemaOf(listType));
}

// --- Lists

Ref<Collection> SmartLists::Lists() const
{
    const auto lists = makeRef<Collection>();
    const Security security(context_);
    for (const auto& list : ListStore(context_).all()) {
        if (security.IsAllowed(listType(list->definition.type).operation)) {
            lists->append(Value(list));
        }
    }
    return lists;
}

Ref<SmartList> SmartLists::GetList(std::int32_t id) const
{
    auto list = ListStore(context_).find(id);
    if (list) require(listType(list->definition.type).operation, "see gifts");
    return list;
}

Ref<SmartList> SmartLists::GetNewList(const std::string& listType)
{
    const ListSchema& schema = schemaOf(listType);
    const Security security(context_);
    auto list = makeRef<SmartList>();
    list->definition.type = schema.type->name;
    list->definition.sort = schema.type->sort;
    for (const ListField& field : schema.fields) {
        if (field.isShown && field.fault.empty() && security.IsAllowed(field.operation)) {
            list->definition.columns.push_back({field.name, field.caption});
        }
    }
    return list;
}

std::string SmartLists::ChangedMeanwhile(const Ref<SmartList>& list) const
{
    if (!list) throw Error::with(ErrorNumber::objectNotSet, "the list");
    return ListStore(context_).changedMeanwhile(*list);
}

// The captions that the user knows are kept, for a day on which the fields no longer exist.
void SmartLists::nameParts(ListDefinition& definition)
{
    const ListSchema& schema = schemaOf(definition.type);
    for (auto& column : definition.columns) {
        if (const ListField* field = schema.field(column.name)) column.caption = field->caption;
    }
    for (auto& filter : definition.filters) {
        if (const auto* criterion = schema.criterion(filter.key)) {
            filter.caption = criterion->caption;
        }
    }
}

bool SmartLists::Save(const Ref<SmartList>& list, bool overwrite)
{
    if (!list) throw Error::with(ErrorNumber::objectNotSet, "the list");
    require("events/edit", "save lists");
    const ListStore store(context_);
    Transaction transaction(context_->sql());
    std::string problem = store.problemOf(*list);
    if (problem.empty() && !overwrite) problem = store.changedMeanwhile(*list);
    if (!problem.empty()) return refuse(problem);
    nameParts(list->definition);
    store.save(*list);
    transaction.commit();
    return true;
}

void SmartLists::Delete(std::int32_t id) const
{
    require("events/edit", "delete lists");
    ListStore(context_).remove(id);
}

ListReading SmartLists::read(const ListDefinition& definition)
{
    return readList(context_, schemaOf(definition.type), definition);
}

Ref<SmartListResult> SmartLists::Run(const Ref<SmartList>& list)
{
    if (!list) throw Error::with(ErrorNumber::objectNotSet, "the list");
    return makeRef<SmartListResult>(context_, listType(list->definition.type),
                                    read(list->definition));
}

std::string SmartLists::Source(std::int32_t listId)
{
    const auto list = GetList(listId);
    if (!list) {
        throw Error::with(ErrorNumber::invalidCall,
                          "there is no list with the id " + std::to_string(listId));
    }
    ListDefinition definition = list->definition;
    definition.columns.clear();
    definition.sort.clear();
    const ListReading reading = read(definition);
    const auto& [text, columns, warnings, isWidened, faults] = reading.statement;
    if (isWidened || !faults.empty()) {
        const std::string& why = faults.empty() ? warnings.front() : faults.front().text;
        throw Error::with(ErrorNumber::invalidCall,
                          "the list \"" + list->Name + "\" cannot be used: " + why);
    }
    return keepRecords(context_, reading.keys());
}

// --- Spans of time

bool SmartLists::SetPeriod(std::int32_t period, const std::string& first,
                           const std::string& last) const
{
    require("settings/edit", "change settings");
    if (period < 1 || period > listPeriods) {
        throw Error::with(ErrorNumber::invalidCall, "there is no period " + std::to_string(period));
    }
    const std::string name = "Period " + std::to_string(period);
    if (!first.empty() || !last.empty()) {
        const auto from = Date::parseIso(first);
        const auto until = Date::parseIso(last);
        if (!from || !until) return refuse(name + " needs a first and a last day.");
        if (*until < *from) return refuse(name + " ends before it begins.");
    }
    Document document(context_);
    Transaction transaction(context_->sql());
    document.setSetting(periodStartSetting(period), first);
    document.setSetting(periodEndSetting(period), last);
    transaction.commit();
    return true;
}

void SmartLists::require(const std::string& right, const char* what) const
{
    if (!Security(context_).IsAllowed(right)) {
        throw Error::with(ErrorNumber::permissionDenied, std::string("you may not ") + what);
    }
}

bool SmartLists::refuse(const std::string& text) const
{
    context_->shell()->ErrorUser(text, {}, {});
    return false;
}

} // namespace refhost
