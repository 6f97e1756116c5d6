#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "automation/currency.h"
#include "automation/date.h"
#include "automation/object_base.h"
#include "automation/ref.h"

namespace qmevents {

class Value;

/// What a Value holds. The order is that of Value's alternatives.
enum class ValueKind {
    empty,
    null,
    missing, ///< An optional argument that the caller left out.
    boolean,
    int16,
    int32,
    real,
    currency,
    date,
    text,
    object, ///< Possibly Nothing.
    array,
};

/// An array of values with one or more dimensions, each with a lower bound; the first index varies
/// slowest.
struct Array {
    struct Dimension {
        std::int32_t lower = 0;
        std::int32_t count = 0;
    };
    std::vector<Dimension> dimensions;
    std::vector<Value> items;

    /// A list with one dimension.
    static std::shared_ptr<Array> list(std::vector<Value> items, std::int32_t lower = 0);
};

struct Null {};
struct Missing {};

/// A dynamically typed value as the host's object model passes it. Texts are UTF-8. Arrays are
/// shared when copied; whoever changes an element copies the array first.
class Value {
public:
    using Storage =
        std::variant<std::monostate, Null, Missing, bool, std::int16_t, std::int32_t, double,
                     Currency, Date, std::string, Ref<Object>, std::shared_ptr<Array>>;

    Value() = default;
    Value(Null) : storage_(Null{}) {}
    Value(Missing) : storage_(Missing{}) {}
    template <typename T>
    requires std::is_same_v<T, bool> Value(T value) : storage_(value) {}
    Value(std::int16_t value) : storage_(value) {}
    Value(std::int32_t value) : storage_(value) {}
    Value(double value) : storage_(value) {}
    Value(Currency value) : storage_(value) {}
    Value(Date value) : storage_(value) {}
    Value(std::string value) : storage_(std::move(value)) {}
    Value(std::string_view value) : storage_(std::string(value)) {}
    Value(const char* value) : storage_(std::string(value)) {}
    template <typename T>
    requires std::is_convertible_v<T*, Object*> Value(Ref<T> object)
        : storage_(Ref<Object>(std::move(object)))
    {
    }
    Value(std::shared_ptr<Array> array) : storage_(std::move(array)) {}
    template <typename T>
    requires std::is_enum_v<T> Value(T value) : storage_(static_cast<std::int32_t>(value)) {}

    static Value nothing() { return {Ref<Object>()}; }

    ValueKind kind() const { return static_cast<ValueKind>(storage_.index()); }
    bool is(ValueKind kind) const { return this->kind() == kind; }
    bool isEmpty() const { return is(ValueKind::empty); }
    bool isNull() const { return is(ValueKind::null); }
    bool isMissing() const { return is(ValueKind::missing); }
    bool isObject() const { return is(ValueKind::object); }
    bool isNothing() const { return isObject() && !object(); }
    bool isText() const { return is(ValueKind::text); }
    bool isNumber() const; ///< Yes/no, integers, double or currency.

    /// What is held, without conversion; the kind must be right.
    template <typename T>
    const T& as() const
    {
        return std::get<T>(storage_);
    }
    const std::string& text() const { return as<std::string>(); }
    const Ref<Object>& object() const { return as<Ref<Object>>(); }
    const std::shared_ptr<Array>& array() const { return as<std::shared_ptr<Array>>(); }
    const Storage& storage() const { return storage_; }
    Storage& storage() { return storage_; }

private:
    Storage storage_;
};

/// The name of a value's type as scripts know it: "Empty", "Null", "Boolean", "Integer", "Long",
/// "Double", "Currency", "Date", "String", "Nothing", the class of an object, "Variant()".
std::string typeName(const Value& value);

} // namespace qmevents
