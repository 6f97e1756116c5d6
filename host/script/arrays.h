#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "automation/value.h"

namespace refhost::script {

using Indices = std::vector<std::int32_t>;

/// A new array of Empty whose highest indices are `bounds`. Error 9 for a negative size but -1,
/// which makes an empty dimension, and 7 for too many elements.
std::shared_ptr<qmevents::Array> makeArray(std::span<const std::int32_t> bounds);
/// The same that keeps the elements of `old`; only the last dimension may change, else error 9.
std::shared_ptr<qmevents::Array> resized(const qmevents::Array& old,
                                         std::span<const std::int32_t> bounds);
/// The position of an element among the items; error 9 when there is none.
std::size_t positionOf(const qmevents::Array& array, std::span<const std::int32_t> indices);
/// The element of the array that `variable` holds, to be written: other holders of the array keep
/// the old one.
qmevents::Value& writableElement(qmevents::Value& variable, std::span<const std::int32_t> indices);
/// Error 7 when `element` is an array that holds arrays that hold arrays and so on, too deep to be
/// taken apart again.
void checkNesting(const qmevents::Value& element);

} // namespace refhost::script
