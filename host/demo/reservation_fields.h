#pragma once

#include <string>
#include <vector>

#include "host/demo/event_series.h"

namespace refhost::demo {

/// The document that holds an activity's question; empty when it asks none.
std::string fieldDefinitions(const QuestionPlan& question);
/// The document that holds the answer of one reservation line; empty without a question.
std::string fieldValues(const QuestionPlan& question, const std::string& answer);
/// The choices of a list, in order.
std::vector<std::string> choicesOf(const QuestionPlan& question);

} // namespace refhost::demo
