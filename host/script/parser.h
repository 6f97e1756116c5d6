#pragma once

#include <memory>
#include <string>

#include "host/script/syntax.h"

namespace refhost::script {

/// The whole of `text` as a tree. Throws SyntaxError; nothing of such a text is ever run.
std::unique_ptr<const Unit> parse(std::string text);

/// `text` as one expression.
ExpressionPtr parseSingleExpression(const std::string& text);

} // namespace refhost::script
