#include <gtest/gtest.h>

#include "automation/date.h"
#include "tests/host/session/fixture.h"
#include "tests/support/temp_folder.h"

#include <filesystem>
#include <fstream>

namespace refhost {
namespace {

/// A list of two donors to whom a module's mailing of kind 2 has been started.
struct Letters : HostFixture {
    explicit Letters(Dialect dialect,
                     const char* fields = "<fields><field name=\"Day\" kind=\"date\"/>"
                                          "<field name=\"Due\" kind=\"money\" mailings=\"1 2\"/>"
                                          "<field name=\"Status\" kind=\"text\" mailings=\"1 4\"/>"
                                          "</fields>")
        : HostFixture(dialect)
    {
        std::ofstream(file) << fields;
        addIn.onEvent = [this](const Ref<Object>& event) {
            answer(toText(get(event, "Key")), getObject(event, "Data"));
        };
        execute("INSERT INTO donor_donors (display, city) VALUES ('Lee & Sons', 'Bay {City}')");
        execute("INSERT INTO donor_donors (display) VALUES ('Abbot, Ann')");
        const auto manage = getObject(module("donor"), "MailingManage");
        for (const int donor : {1, 2}) call(manage, "AddToMailingList", "key", donor);
        call(manage, "StartMailingProcess", "Event", "key");
        list = toObject(call(manage, "GetList", "key"));
    }
    ~Letters() { addIn.onEvent = nullptr; }
    void answer(const std::string& key, const Ref<Object>& data)
    {
        if (key == "mailing-fields") {
            const auto mailings = getObject(module("Quillmere"), "Mailings");
            if (toText(get(data, "ListKey")) == "key") {
                put(data, "Reference", "event 7");
                put(data, "MailingType", "2");
            }
            call(getObject(mailings, "FieldSchema"), "AppendSchema", "M", "m", file.string());
        }
        if (key == "mailing-data") {
            EXPECT_EQ(toText(get(data, "Reference")), "event 7");
            EXPECT_EQ(toText(get(data, "Source")), "Event");
            ++asked;
            for (const Value& donor : get(data, "DonorIds").array()->items) {
                if (qmevents::toInt32(donor) != 1) {
                    call(data, "SetValue", donor, "Due", "on request");
                    continue;
                }
                call(data, "SetValue", donor, "due", qmevents::Currency::fromScaled(12'345'000));
                call(data, "SetValue", donor, "Day", qmevents::Date::of(2026, 3, 7, 18));
            }
            call(data, "SetValue", 99, "Day", "for nobody");
        }
    }
    std::string merged(const std::string& text, int start = 0, int count = 9) const
    {
        std::string all;
        Value letter;
        const auto letters = toObject(call(list, "Merge", text, start, count));
        for (const auto walk = letters->enumerate(); walk->next(letter);) {
            all += toText(get(toObject(letter), "Text")) + "|";
        }
        return all;
    }

    qmevents::testing::TempFolder folder;
    std::filesystem::path file = folder / "letters.xml";
    Ref<Object> list;
    int asked = 0;
};

TEST(Letters, AreMergedDonorByDonorWithBlanksWhereThereIsNoValue)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const Letters host(dialect);
        const struct {
            const char *text, *merged, *unknown;
        } cases[] = {
            {"Dear {DonorName},\nby {Day}: {DUE}!",
             "Dear Abbot, Ann,\nby : on request!|Dear Lee & Sons,\nby March 7, 2026: $1,234.50!|",
             ""},
            {"{DonorCity}{donorcity}", "|Bay {City}Bay {City}|", ""},
            {"{Status} {Nobody} {nobody} {Nobody}",
             "{Status} {Nobody} {nobody} {Nobody}|{Status} {Nobody} {nobody} {Nobody}|",
             "Status, Nobody, nobody"},
            {"{ } {} {a b} {{Day} {unclosed",
             "{ } {} {a b} { {unclosed|{ } {} {a b} {March 7, 2026 {unclosed|", ""},
            {"", "||", ""},
        };
        for (const auto& [text, merged, unknown] : cases) {
            SCOPED_TRACE(text);
            EXPECT_EQ(host.merged(text), merged);
            EXPECT_EQ(toText(call(host.list, "UnknownFields", text)), unknown);
        }
        EXPECT_EQ(host.asked, 5); // once for all donors
        EXPECT_EQ(host.merged("{DonorName}", 1, 1), "Lee & Sons|");
        EXPECT_EQ(host.merged("x", 2), "");
    }
}

TEST(Letters, AreKeptWithTheirListForThoseWhoMaySendThem)
{
    Letters host(Dialect::jet);
    EXPECT_EQ(toText(call(host.list, "SaveLetter", "Dear {DonorName} \xC3\xA9")), "");
    EXPECT_EQ(toText(call(host.list, "SaveLetter", std::string(50'001, 'x'))),
              "A letter has at most 50000 characters.");
    const auto manage = getObject(host.module("donor"), "MailingManage");
    const auto again = toObject(call(manage, "GetList", "KEY"));
    EXPECT_EQ(toText(get(again, "Letter")), "Dear {DonorName} \xC3\xA9");
    UserStore(host.session->sql()).revoke(1, "mailings/send");
    for (const char* member : {"SaveLetter", "UnknownFields", "Merge"}) {
        EXPECT_EQ(failureOf([&] { call(host.list, member, "x"); }).substr(0, 3), "70 ") << member;
    }
    EXPECT_EQ(failureOf([&] { call(host.list, "Delete"); }).substr(0, 3), "70 ");
}

TEST(Letters, AreWrittenWithoutTheFieldsOfAFileThatCannotBeRead)
{
    const Letters host(Dialect::sqlServer, "<fields><field");
    const std::string told = host.frontEnd.seen.at(0);
    EXPECT_NE(told.find(host.file.filename().string()), std::string::npos) << told;
    EXPECT_EQ(host.merged("{DonorName} {Day}", 0, 1), "Abbot, Ann {Day}|");
}

TEST(Letters, CanBeWrittenForListsOfEarlierDatabases)
{
    const HostFixture host;
    for (const char* column : {"reference", "mailingtype", "letter"}) {
        host.session->sql().hostExecute(std::string("ALTER TABLE mailing_lists DROP COLUMN ") +
                                        column);
    }
    const HostFixture again(Dialect::sqlServer, host.database);
    const auto manage = getObject(again.module("donor"), "MailingManage");
    call(manage, "StartMailingProcess", "Event", "key");
    const auto list = toObject(call(manage, "GetList", "key"));
    EXPECT_EQ(toText(call(list, "SaveLetter", "Dear all")), "");
}

} // namespace
} // namespace refhost
