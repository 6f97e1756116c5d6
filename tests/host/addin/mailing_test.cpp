// From an event to a list of the host's mailings.
#include "tests/host/addin/full_event.h"

namespace refhost {
namespace {

using qmevents::toBool;

class EventMailing : public InBothDialects {
protected:
    EventMailing()
    {
        EventFiller(host).prepare();
        made = EventFiller(host).fill(); // both donors are participants, the first one reserved
        const auto second = toObject(call(host.store(), "GetEventParticipant", made.participant));
        put(second, "Status", 2);
        EXPECT_TRUE(toBool(call(host.store(), "UpdateEventParticipant", second)));
    }
    Ref<Object> mailings() const
    {
        return getObject(getObject(getObject(host.session->app(), "Modules"), "donor"),
                         "MailingManage");
    }
    std::string newestList() const
    {
        const auto lists = getObject(mailings(), "Lists");
        const auto donors = getObject(toObject(call(lists, "Item", 1)), "Donors");
        std::string names;
        Value donor;
        for (const auto walk = donors->enumerate(); walk->next(donor);) {
            names += toText(get(donor.object(), "Display")) + ";";
        }
        return names;
    }

    WholeHost host{GetParam()};
    FullEvent made;
};
INSTANTIATE_TEST_SUITE_P(Both, EventMailing, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

TEST_P(EventMailing, GoesToThePartOfThePeopleThatWasChosen)
{
    const auto groups = toObject(call(host.lists(), "GetEventInvitationGroups", true));
    const struct {
        const char *type, *statuses;
        bool byGroup, sponsorships, others;
        std::string activities;
        const char* donors;
    } cases[] = {
        {"1", "~0~", false, false, false, "", "Lee, Kim;"},
        {"1", "~0~~2~", false, false, false, "", "Lee, Kim;Ode, Ann;"},
        {"2", "", false, false, false, "~" + std::to_string(made.activity) + "~", "Lee, Kim;"},
        {"2", "", false, false, false, "", ""},
        {"3", "", false, false, true, "", "Lee, Kim;"},
        {"3", "", false, true, false, "", ""},
        {"4", "", true, false, false, "", "Lee, Kim;Ode, Ann;"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.type) + one.statuses + one.activities);
        host.frontEnd.seen.clear();
        EXPECT_TRUE(toBool(call(host.store(), "StartEventMailingProcess", made.event, one.type,
                                one.statuses, one.byGroup ? groups : Ref<Object>(),
                                one.sponsorships, one.others, one.activities)));
        ASSERT_EQ(host.frontEnd.seen.size(), 1U);
        EXPECT_TRUE(host.frontEnd.seen[0].starts_with("go obsidian://host/mailings?list={"));
        EXPECT_EQ(newestList(), one.donors);
    }
}

TEST_P(EventMailing, LeavesNoDialogOpenWhenItFails)
{
    int failing = 0;
    for (bool started = false; !started; ++failing) {
        SCOPED_TRACE(failing);
        int left = failing;
        host.session->sql().beforeStatement = [&](std::string_view) {
            if (left-- == 0) throw qmevents::Error(3000, "Document", "the disk is full");
        };
        started = toBool(call(host.store(), "StartEventMailingProcess", made.event, "1", "~0~",
                              Ref<Object>(), false, false, ""));
        host.session->sql().beforeStatement = nullptr;
        EXPECT_FALSE(toBool(get(mailings(), "IsCollecting")));
        if (!started) {
            EXPECT_EQ(host.frontEnd.seen.back(), "unexpected error the disk is full|");
        }
    }
    EXPECT_GT(failing, 5);
    EXPECT_EQ(newestList(), "Lee, Kim;");
}

} // namespace
} // namespace refhost
