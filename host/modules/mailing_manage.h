#pragma once

#include <string>

#include "host/modules/mailing_list.h"

namespace refhost {

/// `App.Modules.donor.MailingManage`: collects lists of donors and starts mailings to them.
class MailingManage : public qmevents::DescribedObject {
public:
    static constexpr std::string_view ClassName = "MailingManage";
    const Members& members() const override;

    MailingManage(SharedContext context, Ref<Mailings> mailings)
        : context_(std::move(context)), mailings_(std::move(mailings))
    {
    }

    /// Begins the collecting of donors; error 5 while it is going on already.
    void OpenMailingDialog();
    /// Puts a donor on the list called `listKey`, which the first one makes; a donor stands on a
    /// list once. False when there is no such donor.
    bool AddToMailingList(const std::string& listKey, std::int32_t donorId);
    /// Ends the collecting; error 5 when it was not begun.
    void CloseMailingDialog();
    /// Records who the mailing to the list comes from and shows the list to the user. A list
    /// that nobody was put on is empty. Error 5 while donors are being collected.
    void StartMailingProcess(const std::string& source, const std::string& listKey);

    Ref<qmevents::Collection> Lists() const;                    ///< By key, the newest first.
    Ref<MailingList> GetList(const std::string& listKey) const; ///< Nothing when there is none.
    bool isCollecting() const { return isCollecting_; }

private:
    std::int32_t idOf(const std::string& listKey) const;
    std::int32_t makeList(const std::string& listKey);
    std::string text(const std::string& value) const;

    SharedContext context_;
    Ref<Mailings> mailings_;
    bool isCollecting_ = false;
};

} // namespace refhost
