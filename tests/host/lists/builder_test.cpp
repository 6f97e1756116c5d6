#include "tests/host/lists/list_host.h"

namespace refhost {
namespace {

std::string warningsOf(const ListHost& host)
{
    return column(getObject(toObject(call(host.lists(), "GetSchema", "donors")), "Warnings"), "");
}

TEST(BuilderFiles, AreReadUpToWhatIsWrongWithThem)
{
    const ListHost host;
    const auto field = [](const std::string& attributes, const std::string& inside) {
        return "<listbuilder type=\"donors\">\n<field " + attributes + ">\n" + inside +
               "</field></listbuilder>";
    };
    const std::string good = "<field name=\"gifts\" caption=\"G\" kind=\"number\">"
                             "<value>1</value></field><field name=\"largest\" caption=\"L\" "
                             "kind=\"money\"><value>2</value></field>";
    struct {
        std::string text;
        const char* warning;
    } const cases[] = {
        {"<listbuilder type=\"donors\">\n<field>\n</listbuilder>",
         "builder.xml, line 3: Start-end tags mismatch;"},
        {"<lists type=\"donors\"/>",
         "builder.xml, line 1: the top level element must be <listbuilder>.;"},
        {"<listbuilder type=\"gifts\"/>",
         "builder.xml, line 1: the fields are not for lists of donors.;"},
        {"<listbuilder type=\"donors\">" + good + "\n<other/></listbuilder>",
         "builder.xml, line 2: <other> is no part of a list-builder file.;"},
        {"<listbuilder type=\"donors\">" + good + "\nwords</listbuilder>",
         "builder.xml, line 2: text is no part of a list-builder file.;"},
        {"<listbuilder type=\"donors\">" + good +
             "\n<field name=\"x\" caption=\"X\" kind=\"blob\"/></listbuilder>",
         "builder.xml, line 2: there is no kind called \"blob\".;"},
        {"<listbuilder type=\"donors\">" + good +
             "\n<field name=\"x\" caption=\"X\" kind=\"text\"/></listbuilder>",
         "builder.xml, line 2: the field \"x\" has no value.;"},
        {"<listbuilder type=\"donors\">" + good + "\n" + good + "</listbuilder>",
         "builder.xml, line 2: the field \"gifts\" is defined twice.;"
         "builder.xml, line 2: the field \"largest\" is defined twice.;"},
        {field("name=\"gifts\" caption=\"G\" kind=\"number\"",
               "<value>1</value>\n<filter kind=\"choice\" caption=\"F\"/>"),
         "builder.xml, line 4: there are no choices.;The column “Col largest” is left out: no "
         "file defines its field \"largest\".;"},
        {"<listbuilder type=\"donors\">" + good +
             "\n<filter key=\"k\" caption=\"F\" kind=\"choice\" choices=\"towns\"/></listbuilder>",
         "builder.xml, line 2: there are no choices \"towns\".;"},
        {"<listbuilder type=\"donors\">" + good + "\n<source key=\"s\"/></listbuilder>",
         "builder.xml, line 2: the source \"s\" has no query.;"},
    };
    for (const auto& [text, warning] : cases) {
        SCOPED_TRACE(warning);
        host.writeFile(text);
        EXPECT_EQ(warningsOf(host), warning);
        EXPECT_EQ(host.held("donorname", "is", {"Bo"}), "2 ");
    }
    std::filesystem::remove(host.file());
    EXPECT_EQ(warningsOf(host), "builder.xml: the file was not found.;");
}

TEST(BuilderFiles, ShareSourcesAndChoices)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const ListHost host(dialect);
        host.writeFile("<listbuilder type=\"donors\"><choices key=\"one\"><choice id=\"2\">Two"
                       "</choice></choices><filter key=\"f\" kind=\"choice\" caption=\"F\" "
                       "choices=\"one\"><condition>{few}.Items IS NULL AND {id} IN ({values})"
                       "</condition></filter><field name=\"gifts\" caption=\"G\" kind=\"number\">"
                       "<value>{many}.Items + {few}.Items</value></field>"
                       "<source key=\"few\">SELECT n.id AS RecordId, n.id AS Items FROM "
                       "donor_donors n WHERE n.id &lt;&gt; 2</source><source key=\"many\">SELECT "
                       "n.id AS RecordId, n.id * 10 AS Items FROM donor_donors n</source>"
                       "<field name=\"largest\" caption=\"L\" kind=\"number\">"
                       "<value>{few}.Items</value></field></listbuilder>");
        const auto list = host.newList();
        put(list, "Columns", textsAsArray({"gifts", "largest"}));
        put(list, "Sort", "gifts");
        const auto result = host.run(list);
        EXPECT_EQ(column(getObject(result, "Warnings"), ""), "");
        EXPECT_EQ(keysOf(result, 3).substr(0, 10), "null 11 33");
        EXPECT_EQ(host.held("f", "anyof", {"2"}), "2 ");
        EXPECT_EQ(host.held("largest", "atleast", {"2"}).substr(0, 2), "3 ");
    }
}

TEST(BuilderFiles, LoseOnlyTheFieldsThatTheEngineRefuses)
{
    for (const Dialect dialect : {Dialect::sqlServer, Dialect::jet}) {
        const ListHost host(dialect);
        host.writeFile("<listbuilder type=\"donors\">\n"
                       "<field name=\"gifts\" caption=\"G\" kind=\"number\" leadsto=\"event\">"
                       "<value>Nonsense({id})</value></field>\n"
                       "<field name=\"largest\" caption=\"L\" kind=\"money\">"
                       "<value>12.5</value>\n<filter key=\"f\" kind=\"choice\" caption=\"F\">"
                       "<choices>SELECT Nonsense(1) AS Id FROM donor_donors d</choices><condition>"
                       "{id} IN ({values})</condition></filter></field></listbuilder>");
        const auto schema = toObject(call(host.lists(), "GetSchema", "donors"));
        const std::string refusal = failureOf([&] { call(schema, "Choices", "f"); });
        EXPECT_NE(refusal.find("The choices of “F” cannot be read (builder.xml, line 4): "),
                  std::string::npos)
            << refusal;
        const auto list = host.newList();
        put(list, "Columns", textsAsArray({"donorname", "gifts", "largest"}));
        const auto result = host.run(list);
        EXPECT_EQ(keysOf(result, 4), "12.5 12.5 12.5 12.5 ");
        const std::string warnings = column(getObject(result, "Warnings"), "");
        EXPECT_EQ(warnings.substr(0, warnings.find("): ") + 3),
                  "The column “Col gifts” is left out (builder.xml, line 2): ");
        EXPECT_NE(warnings.find("Nonsense"), std::string::npos);
    }
}

TEST(SmartLists, HideWhatTheUserHasNoRightTo)
{
    const ListHost host(Dialect::sqlServer, {}, {{"events/view"}});
    const auto schema = toObject(call(host.lists(), "GetSchema", "donors"));
    const std::string fields = column(getObject(schema, "Fields"), "Name");
    EXPECT_EQ(fields.find("giftsum"), std::string::npos);
    EXPECT_EQ(fields.find("largest"), std::string::npos);
    EXPECT_NE(fields.find("gifts;"), std::string::npos);
    EXPECT_EQ(column(getObject(schema, "Criteria"), "Key").find("gavefund"), std::string::npos);
    EXPECT_EQ(failureOf([&] { call(schema, "Choices", "gavefund"); }),
              "70 Permission denied (you may not see Gave to fund)");
    for (const char* type : {"donations", "pledges"}) {
        EXPECT_EQ(failureOf([&] { host.newList(type); }),
                  "70 Permission denied (you may not see gifts)");
    }
    const auto list = host.newList();
    put(list, "Columns", textsAsArray({"donorname", "largest", "gone"}));
    put(list, "Sort", "largest");
    put(list, "Descending", true);
    call(list, "AddFilter", "giftsum", "atleast", "50");
    const auto result = host.run(list);
    EXPECT_EQ(keysOf(result), "4 3 2 1 "); // neither narrowed nor sorted by what must stay hidden
    EXPECT_TRUE(toBool(get(result, "IsWidened")));
    EXPECT_EQ(column(getObject(result, "Warnings"), ""),
              "You may not see “Col largest”; the column is left out.;"
              "The column “gone” no longer exists and is left out.;"
              "You may not see “Given in all”; the filter is left out.;");
}

} // namespace
} // namespace refhost
