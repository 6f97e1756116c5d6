#include "tests/handlers/handlers.h"

namespace qmevents::testing {
namespace {

/// A donor's page of the host with its tabs.
class DonorSection : public Handlers {
protected:
    DonorSection()
    {
        auto donor = puppet("Donor");
        donor->holds("Id", 9);
        auto page = maker("GetNewSectionRow");
        page->holds("donor", donor);
        page->on("GetNewSection", [this](std::span<Value>) {
            auto section = puppet("Section");
            section->holds("Title", "").holds("Key", "").holds("Rows", rows_);
            return Value(section);
        });
        auto tab = puppet("Tab");
        tab->holds("Sections", sections_);
        page->on("Tabs", [tab](std::span<Value> a) {
            EXPECT_EQ(toText(a[0]), "detail");
            return Value(tab);
        });
        auto donors = puppet("Donors");
        donors->holds("DetailsPage", page);
        quillmere().holds("Donors", donors);
    }
    Log shownRows() const
    {
        Log shown;
        for (std::size_t i = 1; i <= rows_->size(); ++i) {
            shown.push_back(refCast<Sheet>(rows_->at(i).object())->said);
        }
        return shown;
    }

    Ref<Collection> rows_ = makeRef<Collection>();
    Ref<Collection> sections_ = makeRef<Collection>();
};

TEST_F(DonorSection, SaysNothingButZeroesOfADonorWithoutEvents)
{
    raise("donor-detailspage-tabinit", "detail");
    const auto section = sections_->Item("EventsInfo").object();
    EXPECT_EQ(toText(get(section, "Title")) + " " + toText(get(section, "Key")),
              "Events Info EventsInfo");
    const std::string table =
        "|Value=<table cellpadding=0 cellspacing=0 width=100% style='color:#777'><tr>";
    const auto label = [](const std::string& text) {
        return "<td width=100px style='color:#999999'>" + text + "</td>";
    };
    const std::string zero = "<td width=100px>0</td>";
    const std::string nothing = "<td width=100px>$0.00</td>";
    EXPECT_EQ(shownRows(),
              (Log{"Name=Total Spent" + table + nothing + label("Reservations Paid:") + nothing +
                       label("Total Sponsorship:") + nothing + "</tr></table>",
                   "Name=Invitations" + table + zero + label("Accepted:") + zero +
                       label("Declined:") + zero + "</tr></table>",
                   "Name=Attended" + table + "<td>No events attended</td></tr></table>",
                   "Name=Reservations" + table + "<td>No reservations</td></tr></table>"}));

    for (const char* other : {"summary", "relationship", "Detail", "gifts"}) {
        raise("donor-detailspage-tabinit", other);
    }
    raise("donor-detailspage-summarysections", Value::nothing());
    raise("donor-detailspage-detailsections", "detail");
    EXPECT_EQ(sections_->size(), 1u);
}

TEST_F(DonorSection, AsksInTheWordsOfTheDatabase)
{
    const auto reservations = [](const std::string& sponsorship) {
        return "SELECT ei.Name As EventName, ei.Id As EventId, eer.Id As ReservationId, "
               "eer.ReservationDate As ReservationDate, ea.Name As ActivityName, "
               "eera.Price*eera.Quantity As Amount, eera.Quantity As Quantity, " +
               sponsorship +
               " As ActivitySponsorship FROM ((events_event_reservations_activities eera INNER "
               "JOIN events_event_reservations eer ON eera.FKReservationId = eer.Id) INNER JOIN "
               "events_event_activities ea ON eera.FKActivityId = ea.Id) INNER JOIN "
               "events_event_info ei ON eer.FKEventId = ei.Id WHERE (eer.FKDonorId = <3:9>) ORDER "
               "BY eer.reservationdate DESC";
    };
    const struct {
        std::int32_t documentType;
        const char *sums, *flags, *end, *sponsorship;
    } dialects[] = {
        {1,
         "IsNull(SUM(InvitedFlag),0) As Invited, IsNull(SUM(AcceptedFlag),0) As Accepted, "
         "IsNull(SUM(DeclinedFlag),0) As Declined",
         "CASE WHEN ep.Status=2 THEN 1 ELSE 0 END As AcceptedFlag, CASE WHEN ep.Status=3 THEN 1 "
         "ELSE 0 END As DeclinedFlag",
         ") [mainquery]", "CASE WHEN NOT ea.Sponsorship = 0 THEN 'Yes' ELSE 'No' END"},
        {2,
         "IIf(SUM(InvitedFlag) IS NULL,0,SUM(InvitedFlag)) As Invited, IIf(SUM(AcceptedFlag) IS "
         "NULL,0,SUM(AcceptedFlag)) As Accepted, IIf(SUM(DeclinedFlag) IS "
         "NULL,0,SUM(DeclinedFlag)) As Declined",
         "IIf(ep.Status=2,1,0) As AcceptedFlag, IIf(ep.Status=3,1,0) As DeclinedFlag", ")",
         "IIf(ea.Sponsorship,'Yes','No')"}};
    for (const auto& dialect : dialects) {
        host_.documentType = dialect.documentType;
        sections_->clear();
        raise("donor-detailspage-tabinit", "detail");
        EXPECT_EQ(
            host_.takeLog(),
            (Log{"SELECT vds.totalreservationpaid As TotalReservationDollars, vds.totalamount As "
                 "TotalDollars, vds.totalsponsorshipamount As TotalSponsorshipDollars FROM "
                 "vw_events_donor_summary vds WHERE vds.DonorId = <3:9>",
                 "SELECT " + std::string(dialect.sums) + " FROM (SELECT 1 As InvitedFlag, " +
                     dialect.flags +
                     " FROM events_event_participants ep WHERE ep.Status IN(1,2,3) AND "
                     "ep.FKDonorId = <3:9>" +
                     dialect.end,
                 "SELECT ei.Name, ei.Id FROM events_event_participants ep INNER JOIN "
                 "events_event_info ei ON ep.FKEventId=ei.Id WHERE ep.Attended <> 0 AND "
                 "ep.FKDonorId = <3:9>",
                 reservations(dialect.sponsorship)}));
    }
}

TEST_F(DonorSection, ShowsFiguresAndLinksAndTrustsNoText)
{
    const char* name = "Gala <b> & \"Friends\"";
    host_.answer("vw_events_donor_summary",
                 {{"TotalReservationDollars", "TotalDollars", "TotalSponsorshipDollars"},
                  {{Null{}, Currency::fromUnits(1250), 0.5}}});
    host_.answer("InvitedFlag", {{"Invited", "Accepted", "Declined"}, {{1200, 2, Null{}}}});
    host_.answer("ep.Attended", {{"Name", "Id"}, {{name, 12}, {"Picnic", 13}}});
    host_.answer("eera.Price",
                 {{"EventName", "EventId", "ReservationId", "ActivityName", "Amount", "Quantity"},
                  {{name, 12, 34, "Table \"A\"", 99.5, 2}}});
    raise("donor-detailspage-tabinit", "detail");
    const Log shown = shownRows();
    EXPECT_NE(shown[0].find("<td width=100px>$1,250.00</td>"), std::string::npos);
    EXPECT_NE(shown[0].find("Paid:</td><td width=100px>$0.00</td>"), std::string::npos);
    EXPECT_NE(shown[0].find("ship:</td><td width=100px>$0.50</td>"), std::string::npos);
    EXPECT_NE(shown[1].find("<td width=100px>1200</td>"), std::string::npos);
    EXPECT_NE(shown[1].find("Accepted:</td><td width=100px>2</td>"), std::string::npos);
    EXPECT_EQ(shown[2],
              "Name=Attended|Value=<table cellpadding=0 cellspacing=0 width=100%><tr><td><a "
              "href=\"javascript:App.Modules.Events.Objects('Workflow').Events.ViewEvent(12,"
              "'events_participants');\">Gala &lt;b&gt; &amp; &quot;Friends&quot;</a></td></tr>"
              "<tr style='padding-top:3px'><td><a href=\"javascript:App.Modules.Events.Objects("
              "'Workflow').Events.ViewEvent(13,'events_participants');\">Picnic</a></td></tr>"
              "</table>");
    const std::string cut =
        "<span style=\"text-overflow:ellipsis;overflow:hidden;width:150;cursor:hand;\"";
    const std::string line =
        "Name=Reservations|Value=<table cellpadding=0 cellspacing=0 width=100%><tr "
        "style='padding-top:3px'><td width=\"150\" style=\"padding-right:10px;\"><a "
        "href=\"javascript:App.Modules.Events.Objects('Workflow').Events.ViewEvent(12,"
        "'events_reservations', 9);\">" +
        cut +
        " title=\"Gala &lt;b&gt; &amp; &quot;Friends&quot;\"><nobr>Gala &lt;b&gt; &amp; "
        "&quot;Friends&quot;</nobr></span></a></td><td width=\"150\" "
        "style=\"padding-right:10px;\">" +
        cut +
        " title=\"Table &quot;A&quot;\"><nobr>2 - Table &quot;A&quot;</nobr></span></td><td>"
        "$99.50";
    EXPECT_EQ(shown[3], line +
                            "<span style=\"padding-left:15px;\"><a href=\"javascript:"
                            "App.Modules.Events.Objects('Workflow').Events.EditEventReservation("
                            "12, 34);\">" +
                            cut + ">Edit</span></a></span></td></tr></table>");
    host_.deniedRights = {"events/edit"};
    sections_->clear();
    raise("donor-detailspage-tabinit", "detail");
    EXPECT_EQ(shownRows().back(), line + "</td></tr></table>");
}

} // namespace
} // namespace qmevents::testing
