#include "host/lists/list_fields.h"

namespace refhost {
namespace {

struct KindName {
    ListKind kind;
    std::string_view name;
};
constexpr KindName kinds[] = {
    {ListKind::text, "text"},   {ListKind::yesNo, "yesno"},   {ListKind::date, "date"},
    {ListKind::money, "money"}, {ListKind::number, "number"}, {ListKind::choice, "choice"},
};

} // namespace

std::optional<ListKind> listKind(std::string_view name)
{
    for (const KindName& known : kinds) {
        if (known.name == name) return known.kind;
    }
    return std::nullopt;
}

std::string_view nameOf(ListKind kind)
{
    for (const KindName& known : kinds) {
        if (known.kind == kind) return known.name;
    }
    return {};
}

std::string placeOf(const std::string& origin)
{
    return origin.empty() ? std::string() : " (" + origin + ")";
}

ListCriterion criterionOf(const ListField& field)
{
    return {.key = field.name,
            .caption = field.caption,
            .group = field.group,
            .kind = field.kind,
            .value = field.value,
            .sources = field.sources,
            .operation = field.operation,
            .origin = field.origin};
}

} // namespace refhost
