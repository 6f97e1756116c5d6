#include "tests/handlers/handlers.h"

namespace qmevents::testing {
namespace {

class SmartListFields : public Handlers {
protected:
    Log columnsOf(const char* type) const
    {
        const auto columns = makeRef<Collection>();
        auto data = maker("GetNewColumn");
        data->holds("ListType", type).holds("Columns", columns);
        raise("smartlist-columns", data);
        return saidTo(columns);
    }
};

TEST_F(SmartListFields, ComeFromTheFilesOfTheDatabaseOneByOne)
{
    auto lists = puppet("Smartlists");
    lists->on("types", [this](std::span<Value> type) {
        auto schema = puppet("Schema");
        schema->on("AppendSchema", [this, name = toText(type[0])](std::span<Value> a) {
            host_.log.push_back(name + ": " + toText(a[0]) + " " + toText(a[1]) + " " +
                                toText(a[2]));
            if (name == "donors") throw Error(5, "Schema", "builder-donors.xml, line 3: no end");
            return Value();
        });
        return Value(schema);
    });
    quillmere().holds("Smartlists", lists);
    raise("smartlist-loadtypes");
    raise("smartlist-schema");
    raise("smartlist-modifytypes");
    host_.documentType = 0;
    raise("smartlist-modifytypes");
    const std::string failure = "ErrorUnexpected: builder-donors.xml, line 3: no end";
    EXPECT_EQ(host_.log,
              (Log{"donors: Events events C:\\Events\\cache/lists/builder-donors-sql.xml", failure,
                   "donations: Events events C:\\Events\\cache/lists/builder-donations-sql.xml",
                   "donors: Events events C:\\Events\\cache/lists/builder-donors.xml", failure,
                   "donations: Events events C:\\Events\\cache/lists/builder-donations.xml"}));
}

TEST_F(SmartListFields, AreOfferedHiddenWithTheRightThatMoneyNeeds)
{
    const Log donors = columnsOf("donors");
    ASSERT_EQ(donors.size(), 39u);
    EXPECT_EQ(donors[0], "ModuleId=events|Key=events_invited_value|Caption=Invited to Event|Visible"
                         "=False|Width=100|DataField=eventsinvitedvalue|dataType=8");
    EXPECT_EQ(donors[4],
              "ModuleId=events|Key=events_latest_invited_date|Caption=Most Recent Event Invited "
              "Date|Visible=False|Width=120|DataField=eventslatestinviteddate|dataType=7");
    EXPECT_EQ(donors[38], "ModuleId=events|Key=events_sponsorship_amount_period4|Caption=Period 4 "
                          "Event Sponsorship Money|Visible=False|Width=110|DataField="
                          "eventssponsorshipamountperiod4|dataType=6|Operation=donations/view");
    EXPECT_EQ(std::ranges::count_if(donors,
                                    [](const std::string& said) {
                                        return said.ends_with("|Width=110|") ||
                                               said.ends_with("Operation=donations/view");
                                    }),
              24);
    const std::string name = "ModuleId=events|Key=donation_eventorreservationname|Caption=";
    const std::string nameField =
        "|Visible=False|Width=200|DataField=donationEventOrReservationName";
    const std::string id = "ModuleId=events|Key=donation_eventid|Caption=Event Id|Visible=False|"
                           "Width=70|DataField=donationFKEventId|dataType=3";
    EXPECT_EQ(columnsOf("donations"),
              (Log{"ModuleId=events|Key=donation_haseventorreservation_display|Caption=Associated "
                   "With Event/Reservation|Visible=False|Width=175|DataField="
                   "donationHasEventOrReservation",
                   name + "Event/Reservation Name" + nameField, id}));
    EXPECT_EQ(columnsOf("pledges"),
              (Log{"ModuleId=events|Key=donation_haseventYesNo|Caption=Associated With Event|"
                   "Visible=False|Width=70|DataField=donationHasEventValue",
                   name + "Event Name" + nameField, id}));
    EXPECT_TRUE(columnsOf("Donors").empty());
    EXPECT_TRUE(columnsOf("gifts").empty());
}

class ReportEntries : public Handlers {
protected:
    ReportEntries()
    {
        auto reports = maker("GetNewReport");
        reports->on("GetNewCategory", [this](std::span<Value>) {
            auto category = makeRef<Sheet>();
            put(Ref<Object>(category), "Reports", reports_);
            return Value(category);
        });
        reports->on("Categories", [this](std::span<Value> a) {
            return a.empty() ? Value(categories_) : categories_->Item(a[0]);
        });
        quillmere().holds("Reports", reports);
    }
    static std::string entry(const std::string& named, const std::string& rest = "")
    {
        return named +
               "|Iconimage=C:\\Events\\Cache/1033/Events/gif/report.gif|"
               "Path=C:\\Events\\Cache\\Reports" +
               rest;
    }
    static std::string script(const std::string& command)
    {
        return "|Script=App.Modules.Events.Objects('Workflow').Events." + command + "()";
    }

    Ref<Collection> reports_ = makeRef<Collection>();
    Ref<Collection> categories_ = makeRef<Collection>();
};

TEST_F(ReportEntries, StandInTheirCategoryInOrder)
{
    raise("reports-categories");
    EXPECT_EQ(saidTo(categories_),
              (Log{"Key=events-reports|Name=Events Reports|Description=Create reports to better "
                   "understand your events."}));
    raise("reports-categories-reports");
    const Log listed = saidTo(reports_);
    ASSERT_EQ(listed.size(), 14u);
    EXPECT_EQ(listed[0], entry("Key=events-list|Name=Events List|Description=View all events and "
                               "filter the list by event date."));
    EXPECT_EQ(listed[5],
              entry("Key=events-eventreservations-donation-history-by-campaign|Name=Event "
                    "Reservations and Donation History By Campaign|Description=View event "
                    "reservations and donations according to the campaign that prompted the donor "
                    "to support the event or make the donation.",
                    "|Operation=donations/view"));
}

TEST_F(ReportEntries, OfListsAreTwoOfDonorsAndSixOfEvents)
{
    raise("reports-chooser-dialog", reports_);
    const Log listed = saidTo(reports_);
    ASSERT_EQ(listed.size(), 8u);
    EXPECT_EQ(listed[0], entry("Key=events-sponsorships-by-donor|Name=Event Sponsorships By Donor|"
                               "Description=View a list of event sponsorship activities by donor.",
                               "|IsEntitySmartList=True|EntityType=donors"));
    EXPECT_EQ(listed[1],
              entry("Key=events-donor-summary|Name=Donor Events Summary|Description=View events "
                    "summary information for your donors.",
                    "|Operation=donations/view|IsEntitySmartList=True|EntityType=donors"));
    const char* commands[] = {"ShowParticipantReport",     "ShowReservationByActivityReport",
                              "ShowReservationReport",     "ShowActivityReservationReport",
                              "ShowActivitySummaryReport", "ShowSummaryReport"};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_TRUE(listed[i + 2].ends_with(script(commands[i]) +
                                            "|IsEntitySmartList=True|EntityType=events"))
            << listed[i + 2];
    }
}

} // namespace
} // namespace qmevents::testing
