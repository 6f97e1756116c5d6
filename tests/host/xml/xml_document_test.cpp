#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "automation/error.h"
#include "host/xml/xml_document.h"
#include "tests/support/temp_folder.h"

namespace refhost {
namespace {

using qmevents::call;
using qmevents::Error;
using qmevents::get;
using qmevents::getObject;
using qmevents::makeRef;
using qmevents::put;
using qmevents::toInt32;
using qmevents::toObject;
using qmevents::toText;

Ref<Object> documentOf(const std::string& text)
{
    const Ref<Object> document = makeRef<XmlDocument>();
    EXPECT_TRUE(toBool(call(document, "loadXML", text)))
        << toText(get(getObject(document, "parseError"), "reason"));
    return document;
}

std::string repeated(const std::string& piece, std::size_t times)
{
    std::string result;
    for (; times > 0; --times) result += piece;
    return result;
}

TEST(XmlDocument, ReadsASchemaTheWayAnInstallerDoes)
{
    const auto document = documentOf(R"(<?xml version="1.0"?>
<schemas>
  <schema version="1"><install/></schema>
  <schema version="2">
    <!-- not a child -->
    <install>
      <tables><table name="a">CREATE TABLE a (Id int)</table><table><![CDATA[x < 1]]></table></tables>
      <views><view name="v" dropfirst="true">SELECT 1</view></views>
    </install>
  </schema>
</schemas>)");
    call(document, "setProperty", "SelectionLanguage", "XPath");
    put(document, "async", false);
    const auto root = getObject(document, "documentElement");
    const auto install = toObject(call(root, "selectSingleNode", "schema[@version='2']/install"));
    EXPECT_EQ(toText(get(install, "nodeName")), "install");
    EXPECT_EQ(toInt32(get(getObject(install, "childNodes"), "length")), 2);

    std::string texts;
    Value table;
    const auto tables = toObject(call(install, "selectSingleNode", "tables"));
    for (const auto walk = getObject(tables, "childNodes")->enumerate(); walk->next(table);) {
        texts += toText(get(toObject(table), "text")) + "|";
    }
    EXPECT_EQ(texts, "CREATE TABLE a (Id int)|x < 1|");

    const auto view = toObject(call(install, "selectSingleNode", "views/view"));
    EXPECT_EQ(toText(call(view, "getAttribute", "dropfirst")), "true");
    EXPECT_TRUE(call(view, "getAttribute", "absent").isNull());
    EXPECT_TRUE(call(root, "selectSingleNode", "schema[@version='3']").isNothing());
    EXPECT_EQ(toInt32(get(toObject(call(document, "selectNodes", "//schema/@version")), "length")),
              2);
    EXPECT_EQ(toText(get(toObject(call(root, "selectSingleNode", "(//@version)[2]")), "text")),
              "2");
    EXPECT_EQ(toText(get(getObject(getObject(view, "attributes"), "item", 1), "nodeName")),
              "dropfirst");
}

TEST(XmlDocument, KeepsANodeTheSameObjectWhileItIsBuiltAndMoved)
{
    const auto document = documentOf("<fields/>");
    const auto root = getObject(document, "documentElement");
    const auto field = toObject(call(document, "createElement", "field"));
    const auto value = toObject(call(document, "createElement", "value"));
    call(field, "appendChild", value);
    call(root, "appendChild", field);
    // What is done to the pieces after they were put in shows in the document.
    call(field, "setAttribute", "name", "A & \"B\"");
    call(value, "appendChild", toObject(call(document, "createCDATASection", "a]]>b")));
    EXPECT_EQ(toText(get(document, "xml")),
              "<fields><field name=\"A &amp; &quot;B&quot;\"><value>"
              "<![CDATA[a]]]]><![CDATA[>b]]></value></field></fields>");
    EXPECT_EQ(toText(get(toObject(call(document, "selectSingleNode", "//value")), "text")),
              "a]]>b");
    EXPECT_EQ(toObject(call(document, "selectSingleNode", "//value")), value);

    EXPECT_EQ(toObject(call(root, "removeChild", field)), field);
    EXPECT_EQ(toText(get(document, "xml")), "<fields/>");
    EXPECT_EQ(toText(get(value, "text")), "a]]>b");
    const auto other = documentOf("<other><x/></other>");
    call(getObject(other, "documentElement"), "appendChild", field);
    put(value, "text", "<1>");
    EXPECT_EQ(toText(get(other, "xml")), "<other><x/><field name=\"A &amp; &quot;B&quot;\">"
                                         "<value>&lt;1&gt;</value></field></other>");
    // Reading anew leaves what is still held as it was.
    EXPECT_TRUE(toBool(call(other, "loadXML", "<new/>")));
    EXPECT_EQ(toText(get(value, "text")), "<1>");
}

TEST(XmlDocument, SaysWhereATextIsNoDocument)
{
    struct {
        std::string text;
        int line, column;
        const char* reason;
    } const cases[] = {
        {"", 1, 1, "The document has no top level element."},
        {"  ", 1, 1, "The document has no top level element."},
        {"<a/>\n<b/>", 2, 2, "A document has only one top level element."},
        {"<a/>x", 1, 5, "Text must stand inside the top level element."},
        {"<a>\n  Tom & Ann</a>", 2, 7, "An ampersand must begin a known reference such as &amp;."},
        {"<a>&none;</a>", 1, 4, "An ampersand must begin a known reference such as &amp;."},
        {"<!DOCTYPE a [<!ENTITY x \"y\">]><a/>", 1, 1,
         "A document type declaration is not accepted."},
        {std::string("<a>\0</a>", 8), 1, 4, "A control character cannot stand in a document."},
        {std::string("<a><![CDATA[x\0]]></a>", 21), 1, 14,
         "A control character cannot stand in a document."},
        {repeated("<a>", 257) + repeated("</a>", 257), 1, 770,
         "Elements nest deeper than 256 levels."},
    };
    for (const auto& [text, line, column, reason] : cases) {
        SCOPED_TRACE(text.substr(0, 40));
        const Ref<Object> document = makeRef<XmlDocument>();
        EXPECT_FALSE(toBool(call(document, "loadXML", text)));
        const auto fault = getObject(document, "parseError");
        EXPECT_NE(toInt32(get(fault, "errorCode")), 0);
        EXPECT_EQ(toText(get(fault, "reason")), reason);
        EXPECT_EQ(toInt32(get(fault, "line")), line);
        EXPECT_EQ(toInt32(get(fault, "linepos")), column);
        EXPECT_TRUE(get(document, "documentElement").isNothing());
    }
    for (const char* text : {"<a>", "<a></b>", "<a b=1/>", "<a", "</a>", "<![CDATA[x", "<a b='>"}) {
        const Ref<Object> document = makeRef<XmlDocument>();
        EXPECT_FALSE(toBool(call(document, "loadXML", text))) << text;
        EXPECT_NE(toText(get(getObject(document, "parseError"), "reason")), "") << text;
    }
    documentOf("<a>&#233;&#xE9;&amp;<![CDATA[ & ]]><!-- & --><?p & ?></a>");
    documentOf(repeated("<a>", 256) + "x" + repeated("</a>", 256));
}

TEST(XmlDocument, TakesLargeAndDeepTextsWithoutHarm)
{
    const std::size_t tenMebibytes = 10u << 20;
    const auto wide = documentOf("<a>" + repeated("<b c='d'>e</b>", tenMebibytes / 14) + "</a>");
    const auto root = getObject(wide, "documentElement");
    EXPECT_EQ(toText(get(root, "text")).size(), tenMebibytes / 14);
    for (const auto& text :
         {repeated("<a>", tenMebibytes / 3),
          repeated("<a>", tenMebibytes / 7) + repeated("</a>", tenMebibytes / 7)}) {
        const Ref<Object> document = makeRef<XmlDocument>();
        EXPECT_FALSE(toBool(call(document, "loadXML", text)));
    }
    // A chain built by hand stops at the same depth.
    Ref<Object> inner = getObject(documentOf("<a/>"), "documentElement");
    for (int depth = 1; depth < 256; ++depth) {
        const auto outer = getObject(documentOf("<a/>"), "documentElement");
        call(outer, "appendChild", inner);
        inner = outer;
    }
    const auto outer = getObject(documentOf("<a/>"), "documentElement");
    EXPECT_THROW(call(outer, "appendChild", inner), Error);
}

TEST(XmlDocument, RefusesWhatWouldBreakADocument)
{
    const auto document = documentOf("<a><b/></a>");
    const auto root = getObject(document, "documentElement");
    const auto b = toObject(call(root, "selectSingleNode", "b"));
    const auto text = toObject(call(document, "createTextNode", "t"));
    const std::function<void()> acts[] = {
        [&] { call(root, "selectNodes", "b[["); },
        [&] { call(root, "selectSingleNode", "count(b)"); },
        [&] { call(document, "createElement", "a b"); },
        [&] { call(root, "setAttribute", "1", "x"); },
        [&] { call(root, "setAttribute", "x", std::string("a\0b", 3)); },
        [&] { call(b, "appendChild", root); },
        [&] { call(b, "appendChild", b); },
        [&] { call(document, "appendChild", toObject(call(document, "createElement", "c"))); },
        [&] { call(document, "appendChild", text); },
        [&] { call(text, "appendChild", b); },
        [&] { call(document, "removeChild", b); },
        [&] { call(document, "setProperty", "SelectionLanguage", "Pattern"); },
    };
    for (const auto& act : acts) EXPECT_THROW(act(), Error) << &act - acts;
    EXPECT_EQ(toText(get(document, "xml")), "<a><b/></a>");
}

TEST(XmlDocument, LoadsAFileWhateverTheCaseAndSeparatorsOfItsPath)
{
    const qmevents::testing::TempFolder files;
    const auto& folder = files.path();
    std::filesystem::create_directories(folder / "Cache");
    std::ofstream(folder / "Cache" / "Names.xml") << "\xEF\xBB\xBF<a>\xC3\xA9</a>";
    std::ofstream(folder / "Cache" / "wide.xml", std::ios::binary)
        << std::string("\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18);
    const Ref<Object> document = makeRef<XmlDocument>();
    for (const char* name : {"\\cache\\NAMES.XML", "/Cache/Names.xml", "\\Cache/wide.xml"}) {
        EXPECT_TRUE(toBool(call(document, "Load", folder.string() + name))) << name;
        EXPECT_EQ(toText(get(getObject(document, "documentElement"), "text")), "\xC3\xA9");
    }
    EXPECT_FALSE(toBool(call(document, "Load", folder.string() + "/Cache/none.xml")));
    EXPECT_NE(toText(get(getObject(document, "parseError"), "reason")).find("none.xml"),
              std::string::npos);
    EXPECT_FALSE(toBool(call(document, "Load", folder.string())));
}

} // namespace
} // namespace refhost
