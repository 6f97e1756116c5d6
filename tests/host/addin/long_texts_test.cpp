// Texts of 64 KiB in every column that takes long ones.
#include <functional>

#include "tests/host/addin/full_event.h"

namespace refhost {
namespace {

using qmevents::toBool;

class LongTexts : public InBothDialects {
protected:
    LongTexts() { EventFiller(host).prepare(); }
    WholeHost host{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Both, LongTexts, ::testing::Values(Dialect::sqlServer, Dialect::jet),
                         testNameOf);

// So many bytes of what might be mistaken for the marks around it.
std::string longText(std::size_t size, bool onlyAscii = false)
{
    const std::string piece =
        onlyAscii ? "O'Hara ]]> </field> 100% <5:x> -- \n"
                  : "O'Hara ]]> </field> 100% <5:x> \xD7\xA9\xD7\x9C \xF0\x9F\x8E\x89 \n";
    std::string text;
    while (text.size() + piece.size() <= size) text += piece;
    return text + std::string(size - text.size(), '.');
}

TEST_P(LongTexts, ComeBackEqualOrAreRefusedWhole)
{
    const EventFiller filler(host);
    const FullEvent made = filler.fill();
    const std::string typed = longText(65536, GetParam() == Dialect::jet);
    const struct {
        const char *thing, *property;
        std::int32_t FullEvent::*record;
    } cases[] = {{"Event", "Description", &FullEvent::event},
                 {"Event", "Notes", &FullEvent::event},
                 {"EventActivity", "Description", &FullEvent::activity},
                 {"EventParticipant", "Notes", &FullEvent::participant},
                 {"EventReservation", "Description", &FullEvent::reservation},
                 {"EventReservationActivity", "Notes", &FullEvent::line},
                 {"EventTask", "Notes", &FullEvent::task}};
    for (const auto& [thing, property, record] : cases) {
        SCOPED_TRACE(std::string(thing) + "." + property);
        const auto read = [&, id = made.*record, name = std::string("Get") + thing] {
            return toObject(call(host.store(), name, id));
        };
        const std::string before = toText(get(read(), property));
        const auto edited = read();
        put(edited, property, typed);
        host.frontEnd.seen.clear();
        const bool saved = toBool(call(host.store(), std::string("Update") + thing, edited));
        EXPECT_EQ(toText(get(edited, property)), typed) << "nothing typed is lost";
        if (GetParam() == Dialect::sqlServer) {
            EXPECT_TRUE(saved) << ::testing::PrintToString(host.frontEnd.seen);
            EXPECT_TRUE(toText(get(read(), property)) == typed);
            continue;
        }
        // A statement of this engine holds less than 64,000 characters, however many bytes.
        EXPECT_FALSE(saved);
        ASSERT_EQ(host.frontEnd.seen.size(), 1U);
        EXPECT_TRUE(host.frontEnd.seen[0].starts_with("unexpected error "));
        EXPECT_NE(host.frontEnd.seen[0].find("64,000"), std::string::npos)
            << host.frontEnd.seen[0].substr(0, 300);
        EXPECT_EQ(toText(get(read(), property)), before);
        put(edited, property, "short");
        EXPECT_TRUE(toBool(call(host.store(), std::string("Update") + thing, edited)));
    }
}

TEST_P(LongTexts, OfAReservationFieldComeBackToo)
{
    const EventFiller filler(host);
    const FullEvent made = filler.fill();
    const std::string typed = longText(GetParam() == Dialect::jet ? 20000 : 65536);
    const auto line = toObject(call(host.store(), "GetEventReservationActivity", made.line));
    const auto value = toObject(call(host.store(), "GetNewEventReservationActivityField"));
    put(value, "FieldType", 1);
    put(value, "Name", "Wish");
    put(value, "Value", typed);
    call(getObject(line, "ReservationFieldValues"), "Add", value, "Wish");
    put(line, "Notes", "written");
    ASSERT_TRUE(toBool(call(host.store(), "UpdateEventReservationActivity", line)));
    const auto read = toObject(call(host.store(), "GetEventReservationActivity", made.line));
    EXPECT_TRUE(toText(get(toObject(call(getObject(read, "ReservationFieldValues"), "Item", 1)),
                           "Value")) == typed);
}

} // namespace
} // namespace refhost
