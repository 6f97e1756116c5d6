#include "host/lists/list_types.h"

#include "automation/error.h"
#include "automation/text.h"

namespace refhost {
namespace {

constexpr ListType types[] = {
    {"donors", "Donors", "donors", "donor_donors d", "d.deleted = 0", "d.id", "0", "", "donorname"},
    {"donations", "Gifts", "donations", "donor_gifts d", "d.deleted = 0", "d.donorId",
     "d.FKEventId", "donations/view", "giftdate"},
    {"pledges", "Pledges", "donations", "donor_gifts d", "d.deleted = 0 AND d.pledge <> 0",
     "d.donorId", "d.FKEventId", "donations/view", "giftdate"},
};

constexpr const char* seeGifts = "donations/view";
constexpr const char* receivedJet =
    "FROM donor_gifts_payments p INNER JOIN donor_gifts g ON p.giftId = g.id "
    "WHERE g.donorId = {id} AND g.deleted = 0 AND p.actualDate IS NOT NULL";

struct OwnField {
    const char *name = "", *caption = "", *group = "";
    ListKind kind = ListKind::text;
    bool isShown = false;
    const char* operation = "";
    const char* value = "";     ///< In SQL Server's words.
    const char* jet = nullptr;  ///< In Jet's, where they differ.
    const char* tail = nullptr; ///< What "{tail}" stands for in either.
};

using enum ListKind;

constexpr OwnField donorFields[] = {
    {"donorname", "Name", "Donor", text, true, "", "d.display"},
    {"donortype", "Type", "Donor", text, true, "", "d.entitytype"},
    {"donorcity", "City", "Donor", text, true, "", "d.city"},
    {"donoremail", "E-mail", "Donor", text, true, "", "d.email"},
    {"donorphone", "Telephone", "Donor", text, false, "", "d.phone"},
    {"donoraddress", "Address", "Donor", text, false, "", "d.address"},
    {"donorpostalcode", "Postal code", "Donor", text, false, "", "d.postalcode"},
    {"donorcreated", "Entered", "Donor", date, false, "", "d.created"},
    {"donorid", "Donor number", "Donor", number, false, "", "d.id"},
    {"giftcount", "Gifts", "Gifts", number, false, seeGifts,
     "(SELECT COUNT(*) FROM donor_gifts g WHERE g.donorId = {id} AND g.deleted = 0)"},
    {"giftsum", "Given in all", "Gifts", money, false, seeGifts,
     "IsNull((SELECT SUM(p.actualAmount) {tail}), 0)",
     "IIf(IsNull((SELECT SUM(p.actualAmount) {tail})), 0, (SELECT SUM(p.actualAmount) {tail}))",
     receivedJet},
    {"lastgift", "Last gift", "Gifts", date, false, seeGifts, "(SELECT MAX(p.actualDate) {tail})",
     nullptr, receivedJet},
};

constexpr const char* paymentsOfGift = "FROM donor_gifts_payments p WHERE p.giftId = {id}";
constexpr const char* receivedOfGift =
    "FROM donor_gifts_payments p WHERE p.giftId = {id} AND p.actualDate IS NOT NULL";

constexpr OwnField giftFields[] = {
    {"giftdonor", "Donor", "Gift", text, true, "",
     "(SELECT o.display FROM donor_donors o WHERE o.id = d.donorId)"},
    {"giftdate", "Entered", "Gift", date, true, "", "d.created"},
    {"giftreceived", "Last received", "Gift", date, false, "", "(SELECT MAX(p.actualDate) {tail})",
     nullptr, receivedOfGift},
    {"giftexpected", "Expected", "Gift", money, false, "",
     "IsNull((SELECT SUM(p.expectedAmount) {tail}), 0)",
     "IIf(IsNull((SELECT SUM(p.expectedAmount) {tail})), 0, "
     "(SELECT SUM(p.expectedAmount) {tail}))",
     paymentsOfGift},
    {"giftamount", "Received", "Gift", money, true, "",
     "IsNull((SELECT SUM(p.actualAmount) {tail}), 0)",
     "IIf(IsNull((SELECT SUM(p.actualAmount) {tail})), 0, (SELECT SUM(p.actualAmount) {tail}))",
     receivedOfGift},
    {"giftfund", "Fund", "Gift", text, true, "",
     "(SELECT f.[value] FROM donor_funds f WHERE f.id = d.FKFund)"},
    {"giftcampaign", "Campaign", "Gift", text, false, "",
     "(SELECT c.[value] FROM donor_campaigns c WHERE c.id = d.FKCampaign)"},
    {"giftappeal", "Appeal", "Gift", text, false, "",
     "(SELECT s.[value] FROM donor_list_gifts_sources s WHERE s.id = d.FKSource)"},
    {"giftpledge", "Pledge", "Gift", yesNo, true, "",
     "CASE WHEN d.pledge <> 0 THEN 'Yes' ELSE 'No' END", "IIf(d.pledge <> 0, 'Yes', 'No')"},
    {"giftnote", "Note", "Gift", text, false, "", "d.[note]"},
    {"giftid", "Gift number", "Gift", number, false, "", "d.id"},
};

struct OwnCriterion {
    const char *key = "", *caption = "", *group = "", *operation = "";
    const char *choices = "", *condition = "";
    bool hasTextKeys = false;
};

constexpr const char* funds =
    "SELECT f.id AS Id, f.[value] AS Name FROM donor_funds f ORDER BY f.[order], f.[value]";
constexpr const char* campaigns =
    "SELECT c.id AS Id, c.[value] AS Name FROM donor_campaigns c ORDER BY c.[order], c.[value]";
constexpr const char* appeals = "SELECT s.id AS Id, s.[value] AS Name "
                                "FROM donor_list_gifts_sources s ORDER BY s.[order], s.[value]";

constexpr OwnCriterion donorCriteria[] = {
    {"donortypes", "One of the types", "Donor", "",
     "SELECT DISTINCT d.entitytype AS Id, d.entitytype AS Name FROM donor_donors d "
     "WHERE d.deleted = 0 AND d.entitytype <> ''",
     "d.entitytype IN ({values})", true},
    {"gavefund", "Gave to fund", "Gifts", seeGifts, funds,
     "{id} IN (SELECT g.donorId FROM donor_gifts g WHERE g.deleted = 0 AND g.FKFund IN "
     "({values}))"},
    {"gavecampaign", "Gave to campaign", "Gifts", seeGifts, campaigns,
     "{id} IN (SELECT g.donorId FROM donor_gifts g WHERE g.deleted = 0 AND "
     "g.FKCampaign IN ({values}))"},
};
constexpr OwnCriterion giftCriteria[] = {
    {"giftfunds", "One of the funds", "Gift", "", funds, "d.FKFund IN ({values})"},
    {"giftcampaigns", "One of the campaigns", "Gift", "", campaigns, "d.FKCampaign IN ({values})"},
    {"giftappeals", "One of the appeals", "Gift", "", appeals, "d.FKSource IN ({values})"},
};

void add(ListOffer& offer, std::span<const OwnField> fields, Dialect dialect)
{
    for (const OwnField& own : fields) {
        std::string value = dialect == Dialect::jet && own.jet ? own.jet : own.value;
        if (own.tail) value = qmevents::text::replaceAll(value, "{tail}", own.tail);
        offer.fields.push_back({.name = own.name,
                                .caption = own.caption,
                                .group = own.group,
                                .kind = own.kind,
                                .value = std::move(value),
                                .operation = own.operation,
                                .isShown = own.isShown});
    }
}

void add(ListOffer& offer, std::span<const OwnCriterion> criteria)
{
    for (const OwnCriterion& own : criteria) {
        offer.criteria.push_back({.key = own.key,
                                  .caption = own.caption,
                                  .group = own.group,
                                  .kind = ListKind::choice,
                                  .choices = own.choices,
                                  .condition = own.condition,
                                  .hasTextKeys = own.hasTextKeys,
                                  .operation = own.operation});
    }
}

} // namespace

std::span<const ListType> listTypes() { return types; }

const ListType& listType(std::string_view name)
{
    for (const ListType& type : types) {
        if (qmevents::text::sameName(type.name, name)) return type;
    }
    throw qmevents::Error::with(qmevents::ErrorNumber::invalidCall,
                                "there is no list type called " + std::string(name));
}

ListOffer ownOffer(const ListType& type, Dialect dialect)
{
    ListOffer offer;
    if (type.builder == std::string_view("donors")) {
        add(offer, donorFields, dialect);
        add(offer, donorCriteria);
    } else {
        add(offer, giftFields, dialect);
        add(offer, giftCriteria);
    }
    return offer;
}

} // namespace refhost
