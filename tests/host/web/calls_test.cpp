#include "tests/host/web/fake_host.h"

namespace refhost {
namespace {

json call(const char* name, json args) { return {{"call", name}, {"args", std::move(args)}}; }
json get(const char* name) { return {{"get", name}}; }

class Calls : public WebTest {};

TEST_F(Calls, CarryValuesBothWays)
{
    const json values[] = {
        nullptr,
        true,
        0,
        -2147483648,
        2147483648.0,
        1.5,
        "",
        "Caf\u00e9 \"x\" \\ \n \U0001F389",
        {{"$currency", "12.50"}},
        {{"$currency", "-0.0001"}},
        {{"$date", "2026-03-07T18:00:00"}},
        {{"$date", "1899-12-30T00:00:00"}},
        json::array({1, json::array({"a", nullptr})}),
    };
    for (const json& value : values) {
        const json answer = anna->post("call", chainOf({call("Same", json::array({value}))}));
        EXPECT_EQ(answer.value("value", json("none")), value) << answer;
        EXPECT_EQ(answer.at("out"), json::array({value}));
    }
    anna->post("call", chainOf({{{"put", "Note"}, {"value", "kept"}}}));
    EXPECT_EQ(anna->post("call", chainOf({get("Note")})).at("value"), "kept");
    const json indexed = {{"put", "Dialog"}, {"args", {"eventid"}}, {"value", 5}};
    anna->post("call", chainOf({get("Shell"), indexed}));
    EXPECT_EQ(anna->post("call", chainOf({get("Shell"), call("Dialog", {"EVENTID"})})).at("value"),
              5);
}

TEST_F(Calls, GiveByReferenceResultsAndHoldObjects)
{
    const json refused = anna->post("call", chainOf({call("Find", {99, "", nullptr})}));
    EXPECT_EQ(refused, (json{{"value", false}, {"out", {99, "There is no such thing.", nullptr}}}));
    const json answer =
        anna->post("call", chainOf({call("Find", {2, json{{"$missing", true}}, nullptr})}));
    EXPECT_EQ(answer.at("value"), true);
    const json thing = answer.at("out").at(2);
    EXPECT_EQ(thing.at("$class"), "Thing");

    const json from{{"from", thing}};
    const json steps = chainOf({from, get("Part"), get("Name")});
    EXPECT_EQ(anna->post("call", steps).at("value"), "Thing 1");
    const json echo = anna->post("call", chainOf({call("Same", json::array({thing}))}));
    EXPECT_EQ(echo.at("out").at(0).at("$ref"), thing.at("$ref")) << "held once more for nothing";
    const json reference{{"put", "Note"}, {"value", thing}};
    EXPECT_FALSE(anna->post("call", chainOf({reference})).contains("error"));

    anna->post("release", {{"refs", {thing.at("$ref")}}});
    const json gone = anna->post("call", steps).at("error");
    EXPECT_EQ(gone.at("number"), 424);
    EXPECT_EQ(anna->post("call", chainOf({get("Note"), get("Id")})).at("value"), 2);
}

TEST_F(Calls, ReportWhatTheHostRefuses)
{
    const struct {
        json steps;
        int number;
        const char* part;
    } cases[] = {
        {{call("Fail", json::array())}, 1004, "It \"broke\" \u20ac \ufffd."},
        {{get("Nowhere")}, 438, "FakeApp.Nowhere"},
        {{get("Note"), get("Id")}, 424, "Note is Empty"},
        {{call("Find", {"many"})}, 13, "Id of FakeApp.Find"},
        {{{{"put", "Things"}, {"value", 1}}}, 383, "FakeApp.Things"},
        {{{{"from", {{"$ref", 12345}}}}, get("Id")}, 424, "12345"},
    };
    for (const auto& [steps, number, part] : cases) {
        const json error = anna->post("call", {{"chain", steps}}).at("error");
        EXPECT_EQ(error.at("number"), number) << error;
        EXPECT_NE(error.at("description").get<std::string>().find(part), std::string::npos)
            << error;
    }
}

TEST_F(Calls, ListItemsWithTheirColumns)
{
    json request = chainOf({get("Things")});
    request["columns"] = {"Id", "name", "Cost", "Day", "Part.Name"};
    request["start"] = 1;
    request["count"] = 1;
    const json day{{"$date", "2026-03-07T18:00:00"}};
    EXPECT_EQ(
        anna->post("list", request),
        (json{{"total", 3}, {"rows", {{2, "Thing 2", {{"$currency", "12.50"}}, day, "Thing 1"}}}}));
    request["start"] = 2;
    request["count"] = 100;
    EXPECT_EQ(anna->post("list", request).at("rows").at(0).at(4), nullptr) << "no part, no name";
    request["start"] = 900;
    EXPECT_EQ(anna->post("list", request).at("rows"), json::array());
    request["columns"] = {"Colour"};
    request["start"] = 0;
    EXPECT_EQ(anna->post("list", request).at("error").at("number"), 438);
    json noList = chainOf({get("Shell")});
    noList["columns"] = {"Id"};
    EXPECT_EQ(anna->post("list", noList).at("error").at("number"), 451);
}

TEST_F(Calls, ReadAndWriteSeveralPropertiesAtOnce)
{
    const json second{{"chain", {get("Things"), call("Item", {2})}}};
    json write = second;
    write["values"] = {{"Name", "New"},
                       {"Cost", "a lot"},
                       {"Day", {{"$date", "2027-01-02T00:00:00"}}},
                       {"Part", nullptr},
                       {"Size", 3}};
    const json failed = anna->post("write", write).at("failed");
    EXPECT_EQ(failed.size(), 2U) << failed;
    EXPECT_EQ(failed.at("Cost").at("number"), 13);
    EXPECT_EQ(failed.at("Size").at("number"), 438);
    json read = second;
    read["columns"] = {"Name", "Cost", "Day", "Part"};
    EXPECT_EQ(anna->post("read", read).at("values"),
              (json{{"Name", "New"},
                    {"Cost", {{"$currency", "12.50"}}},
                    {"Day", {{"$date", "2027-01-02T00:00:00"}}},
                    {"Part", nullptr}}));
}

TEST_F(Calls, RunInBatchesUpToTheFirstError)
{
    const json good{{"call", chainOf({call("Same", {1})})}};
    const json bad{{"call", chainOf({call("Fail", json::array())})}};
    json batch{{"calls", {good, bad, good}}};
    EXPECT_EQ(anna->post("batch", batch).at("results").size(), 2U);
    batch["continue"] = true;
    const json results = anna->post("batch", batch).at("results");
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results[1].at("error").at("number"), 1004);
    EXPECT_EQ(results[2].at("value"), 1);
}

TEST_F(Calls, AreRefusedWhenMalformed)
{
    const json step = get("Note");
    const struct {
        const char* request;
        std::string body;
    } cases[] = {
        {"call", "not json"},
        {"call", "[]"},
        {"call", "{}"},
        {"call", R"({"chain":{}})"},
        {"call", R"({"chain":[{}]})"},
        {"call", R"({"chain":[{"get":5}]})"},
        {"call", R"({"chain":[{"get":"A","call":"B"}]})"},
        {"call", R"({"chain":[{"get":"A"},{"from":{"$ref":1}}]})"},
        {"call", R"({"chain":[{"call":"Same","args":[{"x":1}]}]})"},
        {"call", R"({"chain":[{"call":"Same","args":[{"$date":"soon"}]}]})"},
        {"call", R"({"chain":[{"call":"Same","args":["a\u0000b"]}]})"},
        {"call", "{\"chain\":[{\"call\":\"Same\",\"args\":[\"\xC3\x28\"]}]}"},
        {"call", R"({"window":"x","chain":[]})"},
        {"call", R"({"chain":)" + std::string(900, '[') + std::string(900, ']') + "}"},
        {"call", json{{"chain", std::vector<json>(40, step)}}.dump()},
        {"call", chainOf({call("Same", std::vector<int>(40))}).dump()},
        {"list", R"({"chain":[],"columns":[""]})"},
        {"list", R"({"chain":[],"columns":["Id"],"start":-1})"},
        {"write", R"({"chain":[],"values":[]})"},
        {"batch", R"({"calls":[{"batch":{"calls":[]}}]})"},
        {"release", R"({"refs":"all"})"},
        {"dialog-close", R"({"window":1})"},
        {"answer", R"({"id":"x","button":1})"},
        {"leave", R"({"view":"a/b"})"},
    };
    for (const auto& [request, body] : cases) {
        const auto result = anna->send(request, body);
        ASSERT_TRUE(result) << body;
        EXPECT_EQ(result->status, 400) << request << " " << body << " " << result->body;
    }
    EXPECT_EQ(anna->post("call", chainOf({call("Same", {1})})).at("value"), 1);
}

} // namespace
} // namespace refhost
