#include <gtest/gtest.h>

#include "automation/describe.h"

namespace qmevents {
namespace {

/// A small class with one member of each kind.
class Sample : public DescribedObject {
public:
    static constexpr std::string_view ClassName = "Sample";
    const Members& members() const override
    {
        static const Members table =
            describe<Sample>("One of each.")
                .property("Amount", &Sample::Amount, "A field.")
                .readOnly("Fixed", &Sample::Fixed, "Read only.")
                .property("Slot", &Sample::slot, &Sample::setSlot,
                          {arg("Section"), optional("Key", "none")}, "Indexed.")
                .asDefault()
                .method("Sum", &Sample::sum, {arg("A"), optional("B", 10), optional("C")}, "Adds.")
                .method("Find", &Sample::find, {arg("Id"), optional("Message"), optional("Found")},
                        "Answers by reference.")
                .method("Keep", &Sample::keep, {arg("Other")}, "Takes an object.");
        return table;
    }

    std::string slot(const std::string& section, const std::string& key) const
    {
        return section + "/" + key + "=" + stored;
    }
    void setSlot(const std::string& section, const std::string& key, const std::string& value)
    {
        stored = section + key + value;
    }
    std::int32_t sum(std::int32_t a, std::int32_t b, std::optional<std::int32_t> c)
    {
        return a + b + c.value_or(100);
    }
    bool find(std::int32_t id, std::string* message, Ref<Sample>* found)
    {
        if (message && id > 0) *message = "looked for " + std::to_string(id);
        if (found && id > 0) *found = Ref<Sample>(this);
        return id > 0;
    }
    void keep(const Ref<Sample>& other) { kept = static_cast<bool>(other); }

    Currency Amount;
    std::int32_t Fixed = 7;
    std::string stored;
    bool kept = false;
};

struct Failure {
    int number;
    std::string description;
};
Failure failureOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const Error& error) {
        return {error.number(), error.description()};
    }
    return {0, {}};
}

TEST(Members, ConvertArgumentsAndFillInOmittedOnes)
{
    const auto sample = makeRef<Sample>();
    EXPECT_EQ(toInt32(call(sample, "sum", "1")), 111);
    EXPECT_EQ(toInt32(call(sample, "SUM", 1, 2, 3)), 6);
    EXPECT_EQ(toInt32(call(sample, "Sum", 1, Missing{}, 3)), 14);
    EXPECT_EQ(toInt32(call(sample, "Sum", 1, 2, Value())), 103); // empty: as if left out
    put(sample, "Amount", "12.345");
    EXPECT_EQ(sample->Amount.scaled(), 123450);
    put(sample, "Slot", "s", "k", 5);
    EXPECT_EQ(toText(get(sample, "Slot", "x")), "x/none=sk5");
    Value index[] = {Value("y")};
    EXPECT_EQ(toText(sample->invoke(defaultMember, CallKind::get, index)), "y/none=sk5");
}

TEST(Members, WriteByReferenceResultsIntoTheCallersArguments)
{
    const auto sample = makeRef<Sample>();
    Value all[] = {Value(3), Value(), Value()};
    EXPECT_TRUE(toBool(invokeNamed(sample, "Find", CallKind::method, all)));
    EXPECT_EQ(toText(all[1]), "looked for 3");
    EXPECT_EQ(toObject(all[2]), Ref<Object>(sample));
    Value some[] = {Value(1), Value(Missing{}), Value(1)}; // what comes in need not fit
    EXPECT_TRUE(toBool(invokeNamed(sample, "Find", CallKind::method, some)));
    EXPECT_TRUE(some[1].isMissing());
    EXPECT_TRUE(some[2].isObject());
    Value one[] = {Value(1)};
    EXPECT_TRUE(toBool(invokeNamed(sample, "Find", CallKind::method, one)));
    Value two[] = {Value(1), Value()};
    EXPECT_TRUE(toBool(invokeNamed(sample, "Find", CallKind::method, two)));
    EXPECT_EQ(toText(two[1]), "looked for 1");
    for (const Value& left : {Value(), Value("kept"), Value(7), Value(Null{}), Value(sample)}) {
        Value alone[] = {Value(0), left, left};
        EXPECT_FALSE(toBool(invokeNamed(sample, "Find", CallKind::method, alone)));
        EXPECT_EQ(typeName(alone[1]), typeName(left));
        EXPECT_EQ(typeName(alone[2]), typeName(left));
    }
}

TEST(Members, RefuseBadCallsNamingClassMemberAndArgument)
{
    const auto sample = makeRef<Sample>();
    struct {
        std::function<void()> act;
        int number;
        const char* names;
    } const cases[] = {
        {[&] { call(sample, "Nothing"); }, 438, "Sample.Nothing"},
        {[&] { call(sample, "Sum"); }, 449, "A of Sample.Sum"},
        {[&] { call(sample, "Sum", 1, 2, 3, 4); }, 450, "Sample.Sum"},
        {[&] { call(sample, "Sum", "one"); }, 13, "A of Sample.Sum"},
        {[&] { call(sample, "Sum", Null{}); }, 94, "A of Sample.Sum"},
        {[&] { put(sample, "Fixed", 1); }, 383, "Sample.Fixed"},
        {[&] { put(sample, "Sum", 1); }, 383, "Sample.Sum"},
        {[&] { put(sample, "Amount", "x"); }, 13, "Sample.Amount"},
        {[&] { put(sample, "Amount", "1e15"); }, 6, "Sample.Amount"},
        {[&] { call(sample, "Keep", makeRef<Sample>(), 1); }, 450, "Sample.Keep"},
        {[&] { call(sample, "Keep", "text"); }, 424, "Other of Sample.Keep"},
        {[&] { get(sample, "Fixed", 1); }, 450, "Sample.Fixed"},
        {[&] { get(Ref<Object>(), "Fixed"); }, 91, "Fixed"},
    };
    for (const auto& [act, number, names] : cases) {
        const Failure failure = failureOf(act);
        EXPECT_EQ(failure.number, number) << names;
        EXPECT_NE(failure.description.find(names), std::string::npos) << failure.description;
    }
    EXPECT_EQ(sample->Amount.scaled(), 0);
    call(sample, "Keep", Value::nothing());
    EXPECT_FALSE(sample->kept);
}

} // namespace
} // namespace qmevents
