#include <gtest/gtest.h>

#include "tests/support/scripted_host.h"
#include "workflow/dialog.h"

namespace qmevents {
namespace {

using testing::Log;
using testing::puppet;
using testing::ScriptedHost;

class DialogsTest : public ::testing::Test {
protected:
    Ref<Object> make(const std::string& key)
    {
        return toObject(call(getObject(host.root("Events"), "Dialogs"), "NewDialog", key));
    }
    ScriptedHost host;
};

TEST_F(DialogsTest, AreMadeByKeyWithoutRegardToCaseAndBlanks)
{
    EXPECT_EQ(make("  AddEvent ")->className(), "AddEventDialog");
    EXPECT_NE(make("addevent"), make("addevent"));
    for (const char* key : {"", "addevents", "eventsfindresults", "add event"}) {
        EXPECT_FALSE(make(key)) << key;
    }
    EXPECT_EQ(host.log, Log(4, "ErrorUnexpected: A valid dialog key must be provided."));
}

TEST_F(DialogsTest, EachShowItsOwnPageWithItsHeadings)
{
    for (const auto& description : dialogCatalog()) {
        SCOPED_TRACE(description.key);
        const auto dialog = make(std::string(description.key));
        put(dialog, "Title", "T");
        host.log.clear();
        call(dialog, "Create");
        const Log log = host.takeLog();
        EXPECT_EQ(log.front(), "Dialog title = T");
        EXPECT_EQ(log[log.size() - 2],
                  "ShowDialog " + std::string(description.key) + " missing missing 468 550");
        const bool hasHeading = description.headings != Headings::titleOnly;
        EXPECT_EQ(log[1] == "Dialog heading = ", hasHeading);
        const auto described = std::count(log.begin(), log.end(), "Dialog description = ");
        const bool sendsDescription = description.headings == Headings::all ||
                                      description.headings == Headings::ownDescription;
        EXPECT_EQ(described, sendsDescription ? 1 : 0);
    }
}

TEST_F(DialogsTest, ExchangeTheirValuesWithThePage)
{
    const auto status = make("editeventstatus");
    const auto list = puppet("List");
    put(status, "Name", "Planned");
    put(status, "Description", "being planned");
    put(status, "EventStatuses", list);
    put(status, "EditId", 3);
    host.dialogPage = [&] {
        EXPECT_EQ(toText(host.dialogValues["name"]), "Planned");
        EXPECT_EQ(toText(host.dialogValues["description"]), "being planned");
        EXPECT_EQ(host.dialogValues["eventstatuses"].object(), Ref<Object>(list));
        host.dialogValues["name"] = "Confirmed";
        return Value(true);
    };
    EXPECT_TRUE(toBool(call(status, "Create")));
    EXPECT_EQ(toText(get(status, "Name")), "Confirmed");
    EXPECT_EQ(toText(get(status, "Description")), "being planned");

    const auto mailing = make("sendeventmailing");
    host.dialogPage = [&] {
        host.dialogValues["choice"] = "2";
        host.dialogValues["activityids"] = "~4~~5~";
        return Value(true);
    };
    call(mailing, "Create");
    EXPECT_EQ(toText(get(mailing, "ActivityIds")), "~4~~5~");
    EXPECT_TRUE(get(mailing, "InvitationGroups").isEmpty());
    host.dialogPage = [] { return Value(true); };
    call(mailing, "Create");
    EXPECT_TRUE(get(mailing, "ActivityIds").isEmpty()) << "of the showing before";
    EXPECT_THROW(put(mailing, "Choice", 1), Error); // an output is the page's
    EXPECT_THROW(put(mailing, "NoSuchValue", 1), Error);
    EXPECT_THROW(put(status, "EventStatuses", "text"), Error);
}

TEST_F(DialogsTest, ReportMissingRequiredInputsAndShowAllTheSame)
{
    call(make("addevent"), "Create");
    EXPECT_EQ(host.log[3], "ErrorUnexpected: The EventInfo parameter must be specified before "
                           "creating the dialog | 1717");
    EXPECT_EQ(host.log[4], "Dialog EventInfo = Nothing");
    EXPECT_EQ(host.log[5], "ShowDialog addevent missing missing 468 550");
    host.log.clear();
    call(make("deleteevent"), "Create"); // a number is never empty, 0 included
    EXPECT_EQ(host.log[3], "Dialog eventid = 0");
    const auto deleting = make("deleteevent");
    for (const Value& given : {Value(12), Value("12"), Value()}) {
        put(deleting, "EventId", given); // whatever kind it comes in
        EXPECT_EQ(get(deleting, "EventId").kind(), ValueKind::int32);
    }
    EXPECT_THROW(put(deleting, "EventId", "twelve"), Error);
    const auto plumbing = makeRef<DialogTemplate>();
    for (const Value& empty : {Value(), Value(Null{}), Value(Missing{}), Value("")}) {
        host.log.clear();
        plumbing->SetInputValue(empty, "Name", "name", true);
        EXPECT_EQ(host.log.size(), 2U);
    }
    EXPECT_EQ(toInt32(call(plumbing, "GetOutputValue", "never set", 7)), 7);
}

TEST_F(DialogsTest, GatherParticipantsInTheCollectionGivenOrANewOne)
{
    const auto given = make("addeventparticipants");
    const auto collection = toObject(call(host.store(), "GetNewEventParticipants"));
    put(given, "EventParticipants", collection);
    host.dialogPage = [&] {
        EXPECT_EQ(host.dialogValues["eventparticipants"].object(), collection);
        return Value(true);
    };
    call(given, "Create");
    host.dialogPage = [&] {
        const auto gathered = host.dialogValues["eventparticipants"].object();
        EXPECT_NE(gathered, collection);
        EXPECT_EQ(gathered->className(), "cEventParticipants");
        return Value(true);
    };
    call(make("addeventparticipants"), "Create");
    const auto one = make("addeventparticipant"); // gets its participant from whoever opens it
    host.log.clear();
    host.dialogPage = nullptr;
    call(one, "Create");
    EXPECT_EQ(host.log[4], "Dialog eventparticipants = Nothing");
}

TEST_F(DialogsTest, CloseOnlyOnceAlsoWhenTheyWereLeftOpen)
{
    const auto engine = getObject(getObject(host.app(), "Shell"), "Dialog");
    put(engine, "WaitForClose", false);
    call(make("progressbar"), "Create");
    const auto handler = getObject(engine, "Handler");
    Value closing[] = {Value("events/page"), Value(true)};
    invokeNamed(handler, "OnDialogClose", CallKind::method, closing);
    EXPECT_FALSE(toBool(closing[1])) << "the window may close";
    try {
        invokeNamed(handler, "OnDialogClose", CallKind::method, closing);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 51);
        EXPECT_EQ(error.source(), "Dialog Template");
        EXPECT_EQ(error.description(), "Dialog has already been closed");
    }
}

TEST_F(DialogsTest, LeaveNoValuesBehindWhenTheyCannotBeShown)
{
    host.dialogPage = []() -> Value { throw Error(1004, "Host", "no such page"); };
    EXPECT_THROW(call(make("findevent"), "Create"), Error);
    EXPECT_TRUE(host.dialogValues.empty());
}

// An inner page of the find dialog gives the event; with a next page set the window moves on.
TEST_F(DialogsTest, GoOnToTheNextPageAfterAnInnerOne)
{
    for (const bool hasNext : {true, false}) {
        SCOPED_TRACE(hasNext);
        const auto outer = make("findevent");
        if (hasNext) put(outer, "NextPage", "events/next");
        host.dialogPage = [&] {
            const auto engine = getObject(host.app(), "Shell");
            const auto dialog = getObject(engine, "Dialog");
            const auto outerHandler = getObject(dialog, "Handler");
            const auto inner = make("findevent");
            EXPECT_TRUE(toBool(call(inner, "Load", "c1")));
            const auto innerHandler = getObject(dialog, "Handler");
            host.log.clear();
            host.dialogValues["eventid"] = 12;
            // The inner page closes: the engine has put the outer handler back when it is told.
            put(dialog, "Handler", outerHandler);
            Value back[] = {Value("events/elsewhere.html"), Value(false)};
            invokeNamed(innerHandler, "OnDialogBack", CallKind::method, back);
            EXPECT_TRUE(host.log.empty());
            put(dialog, "ReturnValue", true);
            Value closing[] = {Value("events/findevent.html"), Value(false)};
            invokeNamed(innerHandler, "OnDialogBack", CallKind::method, closing);
            EXPECT_EQ(toBool(closing[1]), hasNext) << "the window stays open for the next page";
            Log log{"Dialog.Restore c1"};
            if (hasNext) log.insert(log.end(), {"Dialog.NextPage = events/next", "Dialog.GoNext"});
            EXPECT_EQ(host.log, log);
            return Value(true);
        };
        call(outer, "Create");
        EXPECT_EQ(toInt32(get(outer, "EventId")), 12);
        EXPECT_EQ(toText(get(outer, "DonationType")), "event");
    }
}

} // namespace
} // namespace qmevents
