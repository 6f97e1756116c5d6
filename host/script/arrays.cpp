#include "host/script/arrays.h"

#include <algorithm>

#include "host/script/operators.h"
#include "host/script/script_error.h"

namespace refhost::script {
namespace {

using qmevents::Array;
using qmevents::ErrorNumber;

constexpr std::size_t mostDimensions = 60;
constexpr int deepestNesting = 64;

bool nestsDeeperThan(const qmevents::Value& value, int levels)
{
    if (!value.is(qmevents::ValueKind::array)) return false;
    return levels == 0 || std::ranges::any_of(value.array()->items, [&](const auto& item) {
               return nestsDeeperThan(item, levels - 1);
           });
}

} // namespace

std::shared_ptr<Array> makeArray(std::span<const std::int32_t> bounds)
{
    if (bounds.size() > mostDimensions) throw scriptError(ErrorNumber::subscriptOutOfRange);
    auto array = std::make_shared<Array>();
    std::size_t total = bounds.empty() ? 0 : 1;
    for (const std::int32_t bound : bounds) {
        if (bound < -1) throw scriptError(ErrorNumber::subscriptOutOfRange);
        const auto count = static_cast<std::size_t>(std::int64_t{bound} + 1);
        if (count > mostElements) throw scriptError(ErrorNumber::outOfMemory);
        array->dimensions.push_back({0, static_cast<std::int32_t>(count)});
        total *= count;
        if (total > mostElements) throw scriptError(ErrorNumber::outOfMemory);
    }
    array->items.resize(total);
    return array;
}

std::shared_ptr<Array> resized(const Array& old, std::span<const std::int32_t> bounds)
{
    auto array = makeArray(bounds);
    if (old.dimensions.empty()) return array;
    bool fits = old.dimensions.size() == bounds.size();
    for (std::size_t i = 0; fits && i + 1 < bounds.size(); ++i) {
        fits = old.dimensions[i].count == array->dimensions[i].count;
    }
    if (!fits) throw scriptError(ErrorNumber::subscriptOutOfRange);
    // The last index varies fastest: each row is cut or filled up by itself.
    const auto oldRow = static_cast<std::size_t>(old.dimensions.back().count);
    const auto newRow = static_cast<std::size_t>(array->dimensions.back().count);
    if (oldRow == 0 || newRow == 0) return array;
    for (std::size_t row = 0; row < old.items.size() / oldRow; ++row) {
        for (std::size_t i = 0; i < std::min(oldRow, newRow); ++i) {
            array->items[row * newRow + i] = old.items[row * oldRow + i];
        }
    }
    return array;
}

std::size_t positionOf(const Array& array, std::span<const std::int32_t> indices)
{
    if (indices.size() != array.dimensions.size()) {
        throw scriptError(ErrorNumber::subscriptOutOfRange);
    }
    std::size_t position = 0;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const auto& [lower, count] = array.dimensions[i];
        const std::int64_t offset = std::int64_t{indices[i]} - lower;
        if (offset < 0 || offset >= count) {
            throw scriptError(ErrorNumber::subscriptOutOfRange, std::to_string(indices[i]));
        }
        position = position * static_cast<std::size_t>(count) + static_cast<std::size_t>(offset);
    }
    return position;
}

qmevents::Value& writableElement(qmevents::Value& variable, std::span<const std::int32_t> indices)
{
    const std::size_t position = positionOf(*variable.array(), indices);
    auto& array = std::get<std::shared_ptr<Array>>(variable.storage());
    if (array.use_count() > 1) array = std::make_shared<Array>(*array);
    return array->items[position];
}

void checkNesting(const qmevents::Value& element)
{
    if (nestsDeeperThan(element, deepestNesting)) {
        throw scriptError(ErrorNumber::outOfMemory, "arrays are nested too deeply");
    }
}

} // namespace refhost::script
