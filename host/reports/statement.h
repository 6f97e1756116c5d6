#pragma once

#include <memory>
#include <string>

#include "host/reports/answers.h"

namespace refhost::reporting {

/// Whether the condition is met by what was entered.
bool holds(const Condition& condition, const Answers& answers);

/// `sql` as one statement of the session's dialect.
std::string statementOf(const Inquiry& inquiry, const SqlText& sql, const Answers& answers);

/// Runs that statement; a failure names the layout's line.
std::unique_ptr<Cursor> query(const Inquiry& inquiry, const SqlText& sql, const Answers& answers);

/// Whether every value that the statement asks for was entered.
bool hasWhatItNeeds(const SqlText& sql, const Answers& answers);

} // namespace refhost::reporting
