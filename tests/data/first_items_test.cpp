#include <gtest/gtest.h>

#include "host/app/session.h"
#include "tests/data/events_database.h"
#include "tests/data/schema_file.h"
#include "tests/host/shell/fakes.h"

namespace refhost::test {
namespace {

class FirstListItems : public ::testing::TestWithParam<Dialect> {
protected:
    std::string names(const std::string& list)
    {
        std::string result;
        const auto rows = session_.sql().query("SELECT Name FROM events_list_" + list +
                                               " WHERE Visible <> 0 ORDER BY [Order]");
        for (; !rows->eof(); rows->next()) {
            result += (result.empty() ? "" : ", ") + rows->value(0).text();
        }
        return result;
    }

    ScriptedFrontEnd frontEnd_;
    Session session_{{.database = Database::inMemory(),
                      .dialect = GetParam(),
                      .frontEnd = &frontEnd_,
                      .addInPath = SOURCE_FOLDER}};
};
QM_IN_BOTH_DIALECTS(FirstListItems);

TEST_P(FirstListItems, ComeWithTheInstallationAndOnlyIntoEmptyLists)
{
    EXPECT_TRUE(frontEnd_.seen.empty());
    EXPECT_EQ(names("eventcategories"), "Gala, Auction, Concert, Sports, Volunteer Evening, Other");
    EXPECT_EQ(names("eventinvitationgroups"), "Board, Major Donors, Sponsors, Volunteers, Press");

    session_.sql().execute("DELETE FROM events_list_eventstatuses");
    session_.sql().execute("DELETE FROM events_list_eventcategories WHERE Name <> 'Gala'");
    const Ref<Object> engine = toObject(call(session_.app(), "CreateObject", "ScriptControl"));
    put(engine, "Language", "vbscript");
    call(engine, "AddObject", "App", session_.app());
    call(engine, "AddCode", scriptlet(GetParam(), 2, "first-list-items"));
    EXPECT_EQ(names("eventstatuses"), "Planning, Confirmed, Completed, Cancelled");
    EXPECT_EQ(names("eventcategories"), "Gala");
}

} // namespace
} // namespace refhost::test
