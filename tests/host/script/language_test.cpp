#include <gtest/gtest.h>

#include "tests/host/script/runner.h"

namespace refhost {
namespace {

struct Case {
    const char* script;
    const char* printed;
};

void expectAll(std::span<const Case> cases)
{
    for (const auto& [script, printed] : cases) { EXPECT_EQ(outputOf(script), printed) << script; }
}

TEST(Script, BranchesInBlocksAndInOneLine)
{
    const Case cases[] = {
        {"If 1 = 2 Then\nPrint \"a\"\nElseIf 2 = 2 Then\nPrint \"b\"\nElse\nPrint \"c\"\nEnd If",
         "b\n"},
        {"If Null Then Print 1 Else Print 2", "2\n"},
        {"If True Then Print 1: Print 2 Else Print 3: Print 4", "1\n2\n"},
        {"If False Then Print 1: Print 2 Else Print 3: Print 4", "3\n4\n"},
        {"If True Then If False Then Print 1 Else Print 2\nPrint 3", "2\n3\n"},
        {"If True Then Print 1 End If", "1\n"},
        {"x = 3: If x Then Print x _\n + 1 ' next", "4\n"},
        {"Select Case 2 + 1\nCase 1, 2: Print \"low\"\nCase 3\nPrint \"three\"\n"
         "Case Else Print \"other\"\nEnd Select",
         "three\n"},
        {"Select Case \"B\"\nCase \"b\"\nPrint 1\nCase Else\nPrint 2\nEnd Select", "2\n"},
        {"Select Case Null\nCase Null\nPrint 1\nEnd Select\nPrint 2", "2\n"},
    };
    expectAll(cases);
}

TEST(Script, LoopsAndLeavesThem)
{
    const Case cases[] = {
        {"For i = 1 To 3: Print i: Next: Print i", "1\n2\n3\n4\n"},
        {"For i = 3 To 1 Step -2\nPrint i\nNext", "3\n1\n"},
        {"For i = 1 To 0\nPrint i\nNext\nPrint \"none\"", "none\n"},
        {"For x = 0 To 1 Step 0.5: Print x: Next", "0\n0.5\n1\n"},
        {"For i = 1 To 9\nIf i = 3 Then Exit For\nFor j = 1 To 9\nExit For\nNext\nPrint i, j\nNext",
         "1 1\n2 1\n"},
        {"For i = 32766 To 32768: n = n + 1: Next: Print n, TypeName(i)", "3 Long\n"},
        {"Do While x < 2\nx = x + 1\nLoop\nPrint x", "2\n"},
        {"Do Until x = 2: x = x + 1: Loop: Print x", "2\n"},
        {"Do\nx = x + 1\nLoop While x < 3\nPrint x", "3\n"},
        {"x = 9: Do: x = x + 1: Loop Until True: Print x", "10\n"},
        {"Do\nx = x + 1\nIf x = 5 Then Exit Do\nLoop\nPrint x", "5\n"},
        {"While x < 4\nx = x + 1\nWend\nPrint x", "4\n"},
        {"For Each x In Array(1, \"b\", Null): Print TypeName(x): Next", "Integer\nString\nNull\n"},
        {"a = Array(1, 2): For Each x In a: a(1) = 7: Print x: Next: Print a(1)", "1\n2\n7\n"},
    };
    expectAll(cases);
}

TEST(Script, CallsProceduresWithTheirVariablesOrTheirValues)
{
    const Case cases[] = {
        {"Sub Bump(n): n = n + 1: End Sub\nx = 1: Bump x: Bump(x): Call Bump(x): Print x", "3\n"},
        {"Sub Bump(ByVal n)\nn = n + 1\nEnd Sub\nx = 1\nBump x\nPrint x", "1\n"},
        {"Sub Bump(n)\nn = n + 1\nEnd Sub\nBump fresh\nPrint fresh", "1\n"},
        {"Sub Bump(n)\nn = n + 1\nEnd Sub\nDim a(2): a(1) = 5: Bump a(1): Bump 8: Print a(1)",
         "6\n"},
        {"Sub Both(a, b)\na = 1\nPrint b\nEnd Sub\nBoth x, x", "1\n"},
        {"Function Twice(n)\nTwice = n * 2\nEnd Function\nPrint Twice(4) + Twice(1)", "10\n"},
        {"Function F(n)\nIf n < 2 Then F = 1 Else F = n * F(n - 1)\nEnd Function\nPrint F(10)",
         "3628800\n"},
        {"Function Five: Five = 5: End Function\nPrint Five, Five + Five()", "5 10\n"},
        {"Function Early(n)\nEarly = 1\nIf n Then Exit Function\nEarly = 2\nEnd Function\n"
         "Print Early(True), Early(False)",
         "1 2\n"},
        {"Print Later(2)\nFunction Later(n)\nLater = n + 1\nEnd Function", "3\n"},
        {"Sub Show(a, b)\nPrint TypeName(a), b\nEnd Sub\nShow , 2\nShow (1) + 2, 3\nShow -1, (2)",
         "Error 2\nInteger 3\nInteger 2\n"},
        {"Dim x: x = 1\nSub Inner\nDim x\nx = 2\ny = 3\nEnd Sub\nInner\nPrint x, IsEmpty(y)",
         "1 True\n"},
        {"g = 1\nSub Change\ng = 2\nEnd Sub\nChange\nPrint g", "2\n"},
        {"Function Pair()\nPair = Array(1, Array(2, 3))\nEnd Function\nPrint Pair()(1)(0)", "2\n"},
        {"Public Const a = 1, b = -2.5\nPrivate c, d(1)\nPublic Sub S(): d(1) = a + b: End Sub\n"
         "S: Print d(1)",
         "-1.5\n"},
        {"[odd name] = 4: Print [odd name]: REM gone : Print 1", "4\n"},
    };
    expectAll(cases);
}

TEST(Script, KeepsArraysApartAndResizesThem)
{
    const Case cases[] = {
        {"Dim a(2)\na(0) = 1\nb = a\nb(0) = 2\nPrint a(0), b(0), UBound(a), LBound(a)",
         "1 2 2 0\n"},
        {"Dim a(1, 2)\na(1, 2) = 5\nPrint a(1, 2), UBound(a, 1), UBound(a, 2), IsEmpty(a(0, 0))",
         "5 1 2 True\n"},
        {"ReDim a(1, 1): a(1, 1) = 7: a(0, 1) = 6: ReDim Preserve a(1, 3)\n"
         "Print a(1, 1), a(0, 1), UBound(a, 2)",
         "7 6 3\n"},
        {"a = Array(1, 2, 3): ReDim Preserve a(1): Print Join(a, \"-\"): ReDim a(1): "
         "Print IsEmpty(a(0))",
         "1-2\nTrue\n"},
        {"a = Array(1, Array(2, 3)): b = a: a(1)(0) = 9: Print a(1)(0), b(1)(0)", "9 2\n"},
        {"Dim a(1): a(0) = 1: Erase a: Print IsEmpty(a(0)), UBound(a)", "True 1\n"},
        {"Dim n: n = 2: ReDim a(n + 1): Print UBound(a)", "3\n"},
        {"Dim a(3)\nReDim a(4)", "2 10: This array is fixed (a)"},
        {"Dim a(3)\na = 1", "2 13: Type mismatch (a is an array)"},
        {"Dim a(3)\nPrint a(4)", "2 9: Subscript out of range (4)"},
        {"Dim a(3)\nPrint a(1, 1)", "2 9: Subscript out of range"},
        {"Dim a()\nPrint UBound(a)", "2 9: Subscript out of range"},
        {"ReDim a(1, 1)\nReDim Preserve a(2, 1)", "2 9: Subscript out of range"},
        {"ReDim a(2000, 2000, 2000)", "1 7: Out of memory"},
    };
    expectAll(cases);
}

TEST(Script, StepsOverFailuresWhenToldTo)
{
    const Case cases[] = {
        {"On Error Resume Next\nx = 1 / 0\nPrint Err.Number, Err.Description, 1 + Err\nErr.Clear\n"
         "Print Err.Number\nOn Error GoTo 0\nx = CInt(\"a\")",
         "11 Division by zero 12\n0\n7 13: Type mismatch (String where a number is needed)"},
        {"On Error Resume Next\nSub Fails\nErr.Raise 1000, \"me\", \"no luck\"\nPrint \"never\"\n"
         "End Sub\nFails\nPrint Err.Number, Err.Source, Err.Description",
         "1000 me no luck\n"},
        {"Sub Careful\nOn Error Resume Next\nx = CLng(\"?\")\nPrint \"on\"\nEnd Sub\nCareful\n"
         "x = 1 \\ 0",
         "on\n7 11: Division by zero"},
        {"On Error Resume Next\nIf 1 / 0 Then\nPrint \"in\"\nElse\nPrint \"out\"\nEnd If", "in\n"},
        {"On Error Resume Next\nFor i = 1 To 2\nx = Nothing.Count\nPrint i\nNext", "1\n2\n"},
        {"Err.Raise vbObjectError + 5, , \"mine\"", "1 -2147221499: mine"},
        {"Err.Raise 9", "1 9: Subscript out of range"},
        {"Function Deep(n)\nIf n = 0 Then Deep = 1 / n Else Deep = Deep(n - 1)\nEnd Function\n\n"
         "Print Deep(3)",
         "2 11: Division by zero"},
    };
    expectAll(cases);
}

TEST(Script, WatchesNames)
{
    const Case cases[] = {
        {"Option Explicit\nDim x\nx = 1\nPrint x, y", "4 500: Variable is undefined (y)"},
        {"Option Explicit\ny = 1", "2 500: Variable is undefined (y)"},
        {"Option Explicit\nSub S(a)\nFor i = 1 To a\nNext\nEnd Sub\nS 1",
         "3 500: Variable is undefined (i)"},
        {"Const c = 1\nc = 2", "2 501: Illegal assignment (c)"},
        {"Date = 5", "1 501: Illegal assignment (Date)"},
        {"vbYes = 5", "1 501: Illegal assignment (vbYes)"},
        {"Sub S\nEnd Sub\nS = 1", "3 501: Illegal assignment (S)"},
        {"Prnt \"x\"", "1 13: Type mismatch (Prnt is no procedure, array or object)"},
        {"x = 1\nx", "2 13: Type mismatch (x is no procedure, array or object)"},
        {"Dim Left: Left = 3: Print Left", "3\n"},
        {"Sub S(a)\nEnd Sub\nS", "3 450: Wrong number of arguments (S)"},
        {"Print Len(1, 2)", "1 450: Wrong number of arguments (Len)"},
        {"Print Len()", "1 450: Wrong number of arguments (Len)"},
        {"Print Left(, 2)", "1 449: Argument not optional (Left)"},
        {"x = 5: Set y = x", "1 424: Object required (Integer)"},
        {"x = 5: Print x.Name", "1 424: Object required (Integer before .Name)"},
        {"Set x = Nothing: Print x.Name", "1 91: Object variable not set (Name)"},
        {"Set x = Nothing: y = x", "1 91: Object variable not set"},
        {"For Each x In 5\nNext", "1 451: Object not a collection (Integer)"},
    };
    expectAll(cases);
}

TEST(Script, KeepsVariablesAndProceduresForTheNextText)
{
    Runner runner;
    EXPECT_EQ(runner.run("x = 2\nSub Show\nPrint x\nEnd Sub"), "");
    EXPECT_EQ(runner.run("x = x + 1: Show"), "3\n");
    EXPECT_EQ(runner.run("Sub Show\nPrint \"new\"\nEnd Sub\nShow"), "new\n");
    EXPECT_EQ(qmevents::toInt32(runner.engine.evaluate("x * 2")), 6);
    EXPECT_EQ(runner.run("Function Join2(a, b)\na = a & b\nJoin2 = Len(a)\nEnd Function"), "");
    qmevents::Value arguments[] = {"ab", 3};
    EXPECT_EQ(qmevents::toInt32(runner.engine.run("join2", arguments)), 3);
    EXPECT_EQ(arguments[0].text(), "ab3");
    // A failure in a procedure of an earlier text is told with the line and words of that text.
    EXPECT_EQ(runner.run("\nSub Bad\nx = 1 / 0 ' here\nEnd Sub"), "");
    EXPECT_EQ(runner.run("Bad"), "3 11: Division by zero");
    EXPECT_EQ(runner.engine.error().text, "x = 1 / 0 ' here");
    runner.engine.reset();
    EXPECT_THROW(runner.engine.run("Show", {}), qmevents::Error);
}

} // namespace
} // namespace refhost
