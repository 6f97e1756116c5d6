#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "automation/arguments.h"

// Builds member tables out of typed C++ members, so that each class states its public face once and
// dispatch, argument conversion and documentation follow from it.
namespace qmevents {

/// How a line of a member table says what assigning does; types of their own, so that the compiler
/// can compare them with the field.
inline constexpr std::integral_constant<Marking, Marking::marksDirty> marksDirty{};
inline constexpr std::integral_constant<Marking, Marking::leavesClean> leavesClean{};

/// A required argument called `name`.
inline Parameter arg(std::string name) { return {std::move(name), false, false, {}, {}}; }
/// An argument that may be left out and then counts as `value`, or as not given.
inline Parameter optional(std::string name, Value value = Missing{})
{
    return {std::move(name), true, false, std::move(value), {}};
}

/// Builder of the member table of `C`. Member functions take text as `const std::string&`, objects
/// as `Ref<T>`, optional values as `std::optional<T>` or with a default in the table, and optional
/// by-reference arguments as pointers.
template <typename C>
class Describe {
public:
    explicit Describe(std::string documentation)
        : members_(std::string(C::ClassName), std::move(documentation))
    {
    }

    /// A stored property, read and written. `marking` says what assigning does to the record's
    /// dirty mark; the compiler checks that the field's type does just that.
    template <typename F, typename B, Marking mark>
    Describe& stored(std::string name, F B::*field, std::integral_constant<Marking, mark>,
                     std::string documentation)
    {
        static_assert((mark == Marking::marksDirty) == detail::TrackedField<F>,
                      "the field's type and its line in the table disagree about the dirty mark");
        addField(std::move(name), field, std::move(documentation)).marking = mark;
        return *this;
    }

    /// A plain read-write property of a class that keeps no dirty mark.
    template <typename F, typename B>
    Describe& property(std::string name, F B::*field,
                       std::string documentation) requires(!std::is_function_v<F>)
    {
        static_assert(!detail::TrackedField<F>, "use stored() for a field that marks dirty");
        addField(std::move(name), field, std::move(documentation));
        return *this;
    }

    /// A computed property, read and written through functions. The setter's last argument is the
    /// new value, those before it are the indices that the getter takes too.
    template <typename R, typename B, typename... A, typename S>
    Describe& property(std::string name, R (B::*getter)(A...) const, S setter,
                       std::vector<Parameter> parameters, std::string documentation,
                       Marking marking = Marking::none)
    {
        Member& member = addCall<B>(std::move(name), getter, std::move(parameters),
                                    std::move(documentation), std::index_sequence_for<A...>());
        member.isMethod = false;
        member.marking = marking;
        member.put = assigner(setter, member.name);
        return *this;
    }
    template <typename R, typename B, typename S>
    Describe& property(std::string name, R (B::*getter)() const, S setter,
                       std::string documentation, Marking marking = Marking::none)
    {
        return property(std::move(name), getter, setter, {}, std::move(documentation), marking);
    }

    /// A property that can only be read: a field, or a function, which may take arguments.
    template <typename F, typename B>
    Describe& readOnly(std::string name, F B::*field,
                       std::string documentation) requires(!std::is_function_v<F>)
    {
        addField(std::move(name), field, std::move(documentation)).put = nullptr;
        return *this;
    }
    template <typename R, typename B, typename... A>
    Describe& readOnly(std::string name, R (B::*getter)(A...) const,
                       std::vector<Parameter> parameters, std::string documentation)
    {
        addCall<B>(std::move(name), getter, std::move(parameters), std::move(documentation),
                   std::index_sequence_for<A...>())
            .isMethod = false;
        return *this;
    }
    template <typename R, typename B, typename... A>
    Describe& readOnly(std::string name, R (B::*getter)(A...), std::vector<Parameter> parameters,
                       std::string documentation)
    {
        addCall<B>(std::move(name), getter, std::move(parameters), std::move(documentation),
                   std::index_sequence_for<A...>())
            .isMethod = false;
        return *this;
    }
    template <typename R, typename B>
    Describe& readOnly(std::string name, R (B::*getter)() const, std::string documentation)
    {
        return readOnly(std::move(name), getter, {}, std::move(documentation));
    }
    template <typename R, typename B>
    Describe& readOnly(std::string name, R (B::*getter)(), std::string documentation)
    {
        return readOnly(std::move(name), getter, {}, std::move(documentation));
    }

    /// A property that is read by a free function over the object.
    template <typename R, typename... A>
    Describe& readOnlyBy(std::string name, R (*getter)(C&, A...), std::vector<Parameter> parameters,
                         std::string documentation)
    {
        addFunction<R, A...>(std::move(name), getter, std::move(parameters),
                             std::move(documentation), std::index_sequence_for<A...>())
            .isMethod = false;
        return *this;
    }
    template <typename R>
    Describe& readOnlyBy(std::string name, R (*getter)(C&), std::string documentation)
    {
        return readOnlyBy(std::move(name), getter, {}, std::move(documentation));
    }

    template <typename R, typename B, typename... A>
    Describe& method(std::string name, R (B::*function)(A...), std::vector<Parameter> parameters,
                     std::string documentation)
    {
        addCall<B>(std::move(name), function, std::move(parameters), std::move(documentation),
                   std::index_sequence_for<A...>());
        return *this;
    }
    template <typename R, typename B, typename... A>
    Describe& method(std::string name, R (B::*function)(A...) const,
                     std::vector<Parameter> parameters, std::string documentation)
    {
        addCall<B>(std::move(name), function, std::move(parameters), std::move(documentation),
                   std::index_sequence_for<A...>());
        return *this;
    }
    template <typename R, typename B>
    Describe& method(std::string name, R (B::*function)(), std::string documentation)
    {
        return method(std::move(name), function, {}, std::move(documentation));
    }
    template <typename R, typename B>
    Describe& method(std::string name, R (B::*function)() const, std::string documentation)
    {
        return method(std::move(name), function, {}, std::move(documentation));
    }

    /// The walk over a collection: a function that gives an enumerator.
    template <typename B>
    Describe& enumerator(std::string name, Ref<Enumerator> (B::*function)())
    {
        Member& member =
            addCall<B>(std::move(name), function, {}, "Walks the items, for each in turn.",
                       std::index_sequence_for<>());
        member.isMethod = false;
        members_.makeLastEnumerator();
        return *this;
    }

    /// The member described last gives an object of this class, which its type does not say.
    Describe& givesObject(std::string className)
    {
        members_.last().type = {MemberType::Tag::object, std::move(className)};
        return *this;
    }
    /// Makes the member described last the one that a bare `object(...)` means.
    Describe& asDefault()
    {
        members_.makeLastDefault();
        return *this;
    }
    /// The member described last is written by the store alone.
    Describe& storeOnly()
    {
        members_.last().storeOnly = true;
        members_.last().put = nullptr;
        return *this;
    }
    /// Adds the members that `add`, a function template shared by several classes, describes.
    template <typename Add>
    Describe& with(Add add)
    {
        add(*this);
        return *this;
    }

    operator Members() const { return members_; }

private:
    template <typename F, typename B>
    Member& addField(std::string name, F B::*field, std::string documentation)
    {
        using T = typename detail::FieldValue<F>::type;
        Member member;
        member.documentation = std::move(documentation);
        member.type = detail::typeOf<T>();
        member.get = [field](Object& self, std::span<Value>) {
            return detail::asValue(static_cast<C&>(self).*field);
        };
        member.put = [field, label = name](Object& self, std::span<Value> values) {
            auto& owner = static_cast<C&>(self);
            owner.*field = detail::namingArgument(
                owner.members(), label, {}, [&] { return detail::fromValue<T>(values.back()); });
        };
        member.name = std::move(name);
        return members_.add(std::move(member));
    }

    template <typename B, typename R, typename... A, std::size_t... I>
    Member& addCall(std::string name, R (B::*function)(A...), std::vector<Parameter> parameters,
                    std::string documentation, std::index_sequence<I...> indices)
    {
        return addFunction<R, A...>(
            std::move(name),
            [function](C& self, A... arguments) -> R {
                return (self.*function)(std::forward<A>(arguments)...);
            },
            std::move(parameters), std::move(documentation), indices);
    }
    template <typename B, typename R, typename... A, std::size_t... I>
    Member& addCall(std::string name, R (B::*function)(A...) const,
                    std::vector<Parameter> parameters, std::string documentation,
                    std::index_sequence<I...> indices)
    {
        return addFunction<R, A...>(
            std::move(name),
            [function](C& self, A... arguments) -> R {
                return (self.*function)(std::forward<A>(arguments)...);
            },
            std::move(parameters), std::move(documentation), indices);
    }

    template <typename R, typename... A, typename F, std::size_t... I>
    Member& addFunction(std::string name, F function, std::vector<Parameter> parameters,
                        std::string documentation, std::index_sequence<I...>)
    {
        if (parameters.size() != sizeof...(A)) {
            throw std::logic_error(std::string(C::ClassName) + "." + name +
                                   ": its line names another number of arguments");
        }
        ((parameters[I].type = detail::typeOf<detail::Pointee<std::remove_cvref_t<A>>>(),
          parameters[I].byReference = detail::isByReference<std::remove_cvref_t<A>>),
         ...);
        Member member;
        member.name = std::move(name);
        member.documentation = std::move(documentation);
        member.type = detail::typeOf<std::remove_cvref_t<R>>();
        member.isMethod = true;
        member.parameters = parameters;
        member.get = [function, label = member.name,
                      parameters](Object& self, [[maybe_unused]] std::span<Value> values) -> Value {
            auto& owner = static_cast<C&>(self);
            // Braces fix the order in which the arguments are converted.
            std::tuple<detail::Argument<std::remove_cvref_t<A>>...> arguments{
                detail::namingArgument(owner.members(), label, parameters[I].name, [&] {
                    return detail::Argument<std::remove_cvref_t<A>>(values[I]);
                })...};
            const auto finish = [&] { (std::get<I>(arguments).writeBack(), ...); };
            if constexpr (std::is_void_v<R>) {
                function(owner, std::get<I>(arguments).pass()...);
                finish();
                return {};
            } else {
                Value result = detail::asValue(function(owner, std::get<I>(arguments).pass()...));
                finish();
                return result;
            }
        };
        return members_.add(std::move(member));
    }

    template <typename B, typename... A>
    std::function<void(Object&, std::span<Value>)> assigner(void (B::*setter)(A...),
                                                            std::string label)
    {
        return assignWith<A...>(
            [setter](C& self, A... arguments) { (self.*setter)(std::forward<A>(arguments)...); },
            std::move(label), std::index_sequence_for<A...>());
    }

    template <typename... A, typename F, std::size_t... I>
    std::function<void(Object&, std::span<Value>)> assignWith(F setter, std::string label,
                                                              std::index_sequence<I...>)
    {
        return [setter, label = std::move(label)](Object& self, std::span<Value> values) {
            auto& owner = static_cast<C&>(self);
            std::tuple<std::remove_cvref_t<A>...> arguments{
                detail::namingArgument(owner.members(), label, {}, [&] {
                    return detail::fromValue<std::remove_cvref_t<A>>(values[I]);
                })...};
            setter(owner, std::get<I>(arguments)...);
        };
    }

    Members members_;
};

/// Starts the member table of `C`, whose public name is `C::ClassName`.
template <typename C>
Describe<C> describe(std::string documentation)
{
    return Describe<C>(std::move(documentation));
}

} // namespace qmevents
