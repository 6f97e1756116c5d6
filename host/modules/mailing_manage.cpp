#include "host/modules/mailing_manage.h"

#include "automation/clock.h"
#include "automation/describe.h"
#include "host/document/objects/sql_literal.h"
#include "host/modules/donor_module.h"
#include "host/security/security.h"

namespace refhost {

using qmevents::arg;
using qmevents::Collection;
using qmevents::describe;
using qmevents::Error;
using qmevents::ErrorNumber;
using qmevents::makeRef;

namespace {

// The lists' own columns, how many donors of each are still there, and who collected it.
constexpr const char* listQuery =
    "SELECT l.id, l.listkey, l.source, l.FKuserId, l.created, l.reference, l.mailingtype, "
    "l.letter, (SELECT COUNT(*) FROM "
    "mailing_list_donors m INNER JOIN donor_donors d ON m.FKDonorId = d.id WHERE m.FKListId = l.id "
    "AND d.deleted = 0) AS DonorCount FROM mailing_lists l";

} // namespace

const Members& MailingManage::members() const
{
    static const Members table =
        describe<MailingManage>("Collects lists of donors and starts mailings to them.")
            .method("OpenMailingDialog", &MailingManage::OpenMailingDialog,
                    "Begins the collecting of donors.")
            .method("AddToMailingList", &MailingManage::AddToMailingList,
                    {arg("ListKey"), arg("DonorId")},
                    "Puts a donor on a list, once; False when there is no such donor.")
            .method("CloseMailingDialog", &MailingManage::CloseMailingDialog,
                    "Ends the collecting of donors.")
            .method("StartMailingProcess", &MailingManage::StartMailingProcess,
                    {arg("Source"), arg("ListKey")},
                    "Starts a mailing to a list and shows the list.")
            .readOnly("IsCollecting", &MailingManage::isCollecting,
                      "Whether donors are being collected.")
            .readOnly("Lists", &MailingManage::Lists, "The lists by key, the newest first.")
            .method("GetList", &MailingManage::GetList, {arg("ListKey")}, "A list, or Nothing.");
    return table;
}

void MailingManage::OpenMailingDialog()
{
    if (isCollecting_) {
        throw Error::with(ErrorNumber::invalidCall, "another mailing is still being collected");
    }
    isCollecting_ = true;
}

void MailingManage::CloseMailingDialog()
{
    if (!isCollecting_) {
        throw Error::with(ErrorNumber::invalidCall, "no mailing is being collected");
    }
    isCollecting_ = false;
}

bool MailingManage::AddToMailingList(const std::string& listKey, std::int32_t donorId)
{
    if (!DonorManage(context_).GetSmallDonor(donorId)) return false;
    Transaction transaction(context_->sql());
    const std::int32_t known = idOf(listKey);
    const std::string list = std::to_string(known != 0 ? known : makeList(listKey));
    const std::string donor = std::to_string(donorId);
    bool isListed = false;
    readRows(context_,
             "SELECT id FROM mailing_list_donors WHERE FKListId = " + list +
                 " AND FKDonorId = " + donor,
             [&](const Cursor&) { isListed = true; });
    if (!isListed) {
        runStatement(context_, "INSERT INTO mailing_list_donors (FKListId, FKDonorId) VALUES (" +
                                   list + ", " + donor + ")");
    }
    transaction.commit();
    return true;
}

void MailingManage::StartMailingProcess(const std::string& source, const std::string& listKey)
{
    if (isCollecting_) {
        throw Error::with(ErrorNumber::invalidCall, "the mailing is still being collected");
    }
    const auto setup = mailings_->setUp(listKey);
    Transaction transaction(context_->sql());
    const std::int32_t known = idOf(listKey);
    const std::int32_t list = known != 0 ? known : makeList(listKey);
    runStatement(context_, "UPDATE mailing_lists SET source = " + text(source) +
                               ", reference = " + text(setup->Reference) + ", mailingtype = " +
                               text(setup->MailingType) + " WHERE id = " + std::to_string(list));
    transaction.commit();
    context_->shell()->Navigate("obsidian://host/mailings?list=" + listKey, {});
}

Ref<Collection> MailingManage::Lists() const
{
    const auto lists = makeRef<Collection>();
    const Users users(context_);
    readRows(context_, std::string(listQuery) + " ORDER BY l.created DESC, l.id DESC",
             [&](const Cursor& row) {
                 const auto list = makeRef<MailingList>(context_, mailings_);
                 list->Id = cellOr<std::int32_t>(row, "id", 0);
                 list->Key = cellOr<std::string>(row, "listkey", "");
                 list->Source = cellOr<std::string>(row, "source", "");
                 const auto user = users.FromId(cellOr<std::int32_t>(row, "FKuserId", 0));
                 if (user) list->CreatedBy = user->Name();
                 list->CreateDate = row.value(row.columnIndex("created").value());
                 list->Reference = cellOr<std::string>(row, "reference", "");
                 list->MailingType = cellOr<std::string>(row, "mailingtype", "");
                 list->Letter = cellOr<std::string>(row, "letter", "");
                 list->DonorCount = cellOr<std::int32_t>(row, "DonorCount", 0);
                 lists->append(Value(list), list->Key);
             });
    return lists;
}

Ref<MailingList> MailingManage::GetList(const std::string& listKey) const
{
    const auto lists = Lists();
    if (listKey.empty() || !lists->contains(listKey)) return {};
    return qmevents::refCast<MailingList>(lists->at(std::string_view(listKey)).object());
}

std::int32_t MailingManage::idOf(const std::string& listKey) const
{
    if (qmevents::text::trim(listKey).empty()) {
        throw Error::with(ErrorNumber::invalidCall, "a mailing list needs its key");
    }
    std::int32_t id = 0;
    readRows(context_, "SELECT id FROM mailing_lists WHERE listkey = " + text(listKey),
             [&](const Cursor& row) { id = qmevents::toInt32(row.value(0)); });
    return id;
}

std::int32_t MailingManage::makeList(const std::string& listKey)
{
    const std::string now =
        sqlLiteral(context_->sql().dialect(), Value(qmevents::Clock::now()), LiteralKind::date);
    runStatement(context_, "INSERT INTO mailing_lists (listkey, source, FKuserId, created) "
                           "VALUES (" +
                               text(listKey) + ", '', " + std::to_string(context_->user.id) + ", " +
                               now + ")");
    return newKey(context_);
}

std::string MailingManage::text(const std::string& value) const
{
    return sqlLiteral(context_->sql().dialect(), Value(value), LiteralKind::text);
}

} // namespace refhost
