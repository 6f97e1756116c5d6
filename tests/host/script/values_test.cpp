#include <gtest/gtest.h>

#include "automation/clock.h"
#include "tests/host/script/runner.h"

namespace refhost {
namespace {

struct Row {
    const char* expression;
    const char* result; ///< Its type and its text; a failure as the script would report it.
};

void expectAll(std::span<const Row> rows)
{
    Runner runner;
    runner.run("Sub Show(v)\nIf IsArray(v) Then Print Join(v, \"|\") Else Print TypeName(v), v\n"
               "End Sub\nn = 5: t = \"5\"");
    for (const auto& [expression, result] : rows) {
        std::string shown = runner.run(std::string("Show ") + expression);
        if (!shown.empty() && shown.back() == '\n') shown.pop_back();
        EXPECT_EQ(shown, result) << expression;
    }
}

TEST(ScriptValues, AreComputedAsAutomationDoes)
{
    const Row rows[] = {
        {"1 + 2", "Integer 3"},
        {"\"1\" + \"2\"", "String 12"},
        {"\"1\" + 2", "Double 3"},
        {"\"a\" + 2", "1 13: Type mismatch (String where a number is needed)"},
        {"Empty + \"a\"", "String a"},
        {"Empty + Empty", "Integer 0"},
        {"True + 1", "Integer 0"},
        {"1 & 2 & Null & \"x\"", "String 12x"},
        {"Null & Null", "Null Null"},
        {"Null + 1", "Null Null"},
        {"32767 + 1", "Long 32768"},
        {"-32768 - 1", "Long -32769"},
        {"2147483647 + 1", "Double 2147483648"},
        {"300 * 300", "Long 90000"},
        {"65536 * 65536", "Double 4294967296"},
        {"1e308 * 10", "1 6: Overflow"},
        {"7 / 2", "Double 3.5"},
        {"-7 \\ 2", "Integer -3"},
        {"-7 Mod 3", "Integer -1"},
        {"7.5 \\ 2", "Long 4"},
        {"0 / 0", "1 6: Overflow"},
        {"1 Mod 0", "1 11: Division by zero"},
        {"-2 ^ 2", "Double -4"},
        {"2 ^ -1", "Double 0.5"},
        {"2 ^ 3 ^ 2", "Double 64"},
        {"(-8) ^ 0.5", "1 5: Invalid procedure call or argument"},
        {"2 + 3 * 4 Mod 5 \\ 2", "Integer 2"},
        {"CCur(\"12.50\") * 3", "Currency 37.5"},
        {"CCur(\"0.1\") + 0.2", "Currency 0.3"},
        {"CCur(10) * 1.5", "Double 15"},
        {"CCur(10) / 4", "Double 2.5"},
        {"-CCur(\"922337203685477.5807\") - 1", "1 6: Overflow"},
        {"#3/7/2026# + 1.5", "Date 3/8/2026 12:00:00 PM"},
        {"#2026-03-07 12:00# - #3/6/2026#", "Double 1.5"},
        {"#3/7/2026 2:05 PM# - 1", "Date 3/6/2026 2:05:00 PM"},
        {"&HFF", "Integer 255"},
        {"&HFFFF", "Integer -1"},
        {"&HFFFF&", "Long 65535"},
        {"&O17", "Integer 15"},
        {"t &HFF", "1 1025: Expected end of statement (found &HFF)"},
        {"\"x\"&Hex(10)", "String xA"},
        {"1.5e2", "Double 150"},
        {"\"say \"\"hi\"\"\"", "String say \"hi\""},
    };
    expectAll(rows);
}

TEST(ScriptValues, AreComparedAndCombined)
{
    const Row rows[] = {
        {"\"a\" < \"b\"", "Boolean True"},
        {"\"a\" = \"A\"", "Boolean False"},
        {"n = t", "Boolean False"},
        {"n < t", "Boolean True"},
        {"t = 5", "Boolean True"},
        {"n = \"5\"", "Boolean True"},
        {"t < 10", "Boolean True"},
        {"\"a\" = 5", "Boolean False"},
        {"t & \"a\" = 5", "1 13: Type mismatch (String where a number is needed)"},
        {"Empty = \"\"", "Boolean True"},
        {"Empty = 0", "Boolean True"},
        {"Null = Null", "Null Null"},
        {"#3/7/2026# > #2026-03-06 23:59:59#", "Boolean True"},
        {"CCur(\"0.3\") = 0.1 + 0.2", "Boolean True"},
        {"Nothing Is Nothing", "Boolean True"},
        {"5 Is Nothing", "1 424: Object required (Integer)"},
        {"Not 5", "Integer -6"},
        {"Not True", "Boolean False"},
        {"Not Null", "Null Null"},
        {"6 And 3", "Integer 2"},
        {"True And 3", "Integer 3"},
        {"\"True\" And True", "Boolean True"},
        {"6 Or 70000", "Long 70006"},
        {"6 Xor 3", "Integer 5"},
        {"True Eqv False", "Boolean False"},
        {"False Imp False", "Boolean True"},
        {"Null And False", "Boolean False"},
        {"Null And True", "Null Null"},
        {"Null Or True", "Boolean True"},
        {"False Imp Null", "Boolean True"},
        {"True Imp Null", "Null Null"},
        {"3e9 And 1", "1 6: Overflow"},
        {"1 = 2 Or Not 3 < 2 And 1 <> 2", "Boolean True"},
    };
    expectAll(rows);
}

TEST(ScriptValues, GoThroughTextFunctions)
{
    const Row rows[] = {
        {"Len(\"Zoë\")", "Long 3"},
        {"Left(\"Zoë!\", 3)", "String Zoë"},
        {"Right(\"aëb\", 2)", "String ëb"},
        {"Right(\"ab\", 5)", "String ab"},
        {"Mid(\"Zoë!\", 3, 1)", "String ë"},
        {"Mid(\"abc\", 2)", "String bc"},
        {"Mid(\"abc\", 9)", "String "},
        {"Mid(\"abc\", 0)", "1 5: Invalid procedure call or argument"},
        {"Left(Null, 2)", "Null Null"},
        {"InStr(\"ëbcb\", \"b\")", "Long 2"},
        {"InStr(3, \"ëbcb\", \"b\")", "Long 4"},
        {"InStr(1, \"ËB\", \"ëb\", 1)", "Long 1"},
        {"InStr(\"abc\", \"\")", "Long 1"},
        {"InStr(\"\", \"a\")", "Long 0"},
        {"InStrRev(\"abcb\", \"b\")", "Long 4"},
        {"InStrRev(\"abcb\", \"b\", 3)", "Long 2"},
        {"Replace(\"a-b-c\", \"-\", \"+\")", "String a+b+c"},
        {"Replace(\"a-b-c\", \"-\", \"\", 1, 1)", "String ab-c"},
        {"Replace(\"xAx\", \"a\", \"b\", 1, -1, vbTextCompare)", "String xbx"},
        {"Replace(\"abc\", \"b\", \"\", 2)", "String c"},
        {"UCase(\"straße ë\")", "String STRAßE Ë"},
        {"\"[\" & Trim(\"  a b \") & LTrim(\" c \") & RTrim(\" d \") & \"]\"", "String [a bc  d]"},
        {"\"[\" & Space(2) & String(2, \"xy\") & String(2, 65) & \"]\"", "String [  xxAA]"},
        {"Space(99999999)", "1 7: Out of memory (the text is too long)"},
        {"String(2000000000, \"ë\")", "1 7: Out of memory (the text is too long)"},
        {"StrComp(\"a\", \"B\", 1)", "Integer -1"},
        {"StrReverse(\"aëb\")", "String bëa"},
        {"Asc(\"A\") & AscW(\"€\") & Chr(66) & ChrW(8364)", "String 658364B€"},
        {"ChrW(-3)", "String \xEF\xBF\xBD"},
        {"Chr(256)", "1 5: Invalid procedure call or argument"},
        {"Split(\"a,b,c\", \",\")", "a|b|c"},
        {"Split(\"a,b,c\", \",\", 2)", "a|b,c"},
        {"UBound(Split(\"\"))", "Long -1"},
        {"Filter(Array(\"Ann\", \"Bob\", \"Hanna\"), \"an\", True, 1)", "Ann|Hanna"},
        {"Filter(Array(\"Ann\", \"Bob\"), \"n\", False)", "Bob"},
        {"Hex(-1) & Hex(255) & Oct(8) & Hex(CLng(-1))", "String FFFFFF10FFFFFFFF"},
    };
    expectAll(rows);
}

TEST(ScriptValues, GoThroughNumberFunctions)
{
    const Row rows[] = {
        {"CInt(\"2.5\")", "Integer 2"},
        {"CInt(40000)", "1 6: Overflow"},
        {"CLng(\" &H10 \")", "Long 16"},
        {"CStr(#3/7/2026 3:45 PM#)", "String 3/7/2026 3:45:00 PM"},
        {"CBool(\"false\")", "Boolean False"},
        {"CDate(\"7 March 2026\")", "Date 3/7/2026"},
        {"CStr(Null)", "1 94: Invalid use of Null"},
        {"Int(-2.5) & Fix(-2.5) & Int(CCur(-2.5)) & Fix(CCur(-2.5))", "String -3-2-3-2"},
        {"Abs(\"-3\") & Abs(CCur(-2)) & Sgn(-4)", "String 32-1"},
        {"Round(2.5) & Round(3.5) & Round(-1.25, 1)", "String 24-1.2"},
        {"Round(CCur(\"2.345\"), 2)", "Currency 2.34"},
        {"Sqr(9)", "Double 3"},
        {"Sqr(-1)", "1 5: Invalid procedure call or argument"},
        {"FormatNumber(1234.565)", "String 1,234.57"},
        {"FormatNumber(-0.5, 0)", "String -1"},
        {"FormatNumber(-0.004)", "String 0.00"},
        {"FormatNumber(0.25, 1, 0)", "String .3"},
        {"FormatNumber(-1234567.8, 1, -1, -1, 0)", "String (1234567.8)"},
        {"FormatNumber(999.999, 2)", "String 1,000.00"},
        {"FormatCurrency(\"1234.5\")", "String $1,234.50"},
        {"FormatCurrency(-3)", "String -$3.00"},
        {"FormatPercent(0.125)", "String 12.50%"},
        {"Rnd & \"\" = Rnd(0) & \"\"", "Boolean True"},
        {"TypeName(Rnd)", "String Double"},
        {"IsNumeric(\"1e3\") & IsNumeric(\"x\") & IsDate(\"2/30/2026\") & IsDate(\"2/28/2026\")",
         "String TrueFalseFalseTrue"},
        {"VarType(Array()) & VarType(1) & VarType(Null) & IsEmpty(u) & IsObject(Nothing)",
         "String 820421TrueTrue"},
    };
    expectAll(rows);
    // The same numbers in each run.
    EXPECT_EQ(outputOf("Print Rnd, Rnd"), outputOf("Print Rnd, Rnd"));
    EXPECT_NE(outputOf("Print Rnd"), outputOf("Randomize 7: Print Rnd"));
}

TEST(ScriptValues, GoThroughDateFunctions)
{
    const qmevents::PinnedClock clock(qmevents::Date::of(2026, 3, 7, 9, 30));
    const Row rows[] = {
        {"Now", "Date 3/7/2026 9:30:00 AM"},
        {"Date", "Date 3/7/2026"},
        {"Time", "Date 9:30:00 AM"},
        {"Year(Now) & Month(Now) & Day(Now) & Hour(Now) & Minute(Now) & Second(Now)",
         "String 2026379300"},
        {"Weekday(#3/8/2026#) & Weekday(#3/8/2026#, vbMonday)", "String 17"},
        {"MonthName(3) & MonthName(3, True) & WeekdayName(1) & WeekdayName(1, True, 2)",
         "String MarchMarSundayMon"},
        {"MonthName(13)", "1 5: Invalid procedure call or argument"},
        {"DateSerial(2026, 14, 0)", "Date 1/31/2027"},
        {"DateSerial(29, 1, 1)", "Date 1/1/2029"},
        {"DateSerial(2026, 1, -2147483647 - 1)", "1 6: Overflow"},
        {"TimeSerial(1, 90, 0)", "Date 2:30:00 AM"},
        {"DateAdd(\"m\", 1, #1/31/2026#)", "Date 2/28/2026"},
        {"DateAdd(\"ww\", -1, #3/7/2026#)", "Date 2/28/2026"},
        {"DateAdd(\"n\", 90, #3/7/2026#)", "Date 3/7/2026 1:30:00 AM"},
        {"DateAdd(\"d\", 1e20, #3/7/2026#)", "1 6: Overflow"},
        {"DateAdd(\"yyyy\", 9000, #3/7/2026#)", "1 6: Overflow"},
        {"DateAdd(\"x\", 1, #3/7/2026#)", "1 5: Invalid procedure call or argument (x)"},
        {"DateDiff(\"yyyy\", #12/31/2025#, #1/1/2026#)", "Long 1"},
        {"DateDiff(\"d\", #3/7/2026 23:59#, #3/8/2026#)", "Long 1"},
        {"DateDiff(\"h\", #3/7/2026 1:59#, #3/7/2026 2:01#)", "Long 1"},
        {"DateDiff(\"ww\", #3/7/2026#, #3/8/2026#)", "Long 1"},
        {"DateDiff(\"w\", #3/7/2026#, #3/13/2026#)", "Long 0"},
        {"DateDiff(\"s\", #3/7/2026#, #3/6/2026#)", "Long -86400"},
        {"DatePart(\"q\", #8/1/2026#) & DatePart(\"y\", #2/1/2026#)", "String 332"},
        {"DatePart(\"ww\", #1/4/2026#)", "Integer 2"},
        {"DatePart(\"ww\", #1/1/2027#, vbMonday, vbFirstFourDays)", "Integer 53"},
        {"DatePart(\"ww\", #12/29/2025#, vbMonday, vbFirstFourDays)", "Integer 1"},
        {"DateValue(\"3/7/2026 14:00\") & \" \" & TimeValue(\"14:00\")",
         "String 3/7/2026 2:00:00 PM"},
        {"Year(Null)", "Null Null"},
        {"FormatDateTime(Now, vbLongDate)", "String Saturday, March 7, 2026"},
        {"FormatDateTime(Now, 2) & FormatDateTime(Now, 3) & FormatDateTime(Now, 4)",
         "String 3/7/20269:30:00 AM09:30"},
    };
    expectAll(rows);
}

} // namespace
} // namespace refhost
