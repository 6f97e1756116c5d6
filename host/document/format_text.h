#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "automation/date.h"

namespace refhost {

/// `date` as CONVERT(NVARCHAR, date, style) writes it; nothing for a style that is not offered.
std::optional<std::string> styledDate(qmevents::Date date, int style);
/// A date that was written in `style`; nothing when it is none or the style is not offered.
std::optional<qmevents::Date> readStyledDate(std::string_view text, int style);

/// `date` as Format writes it: "yyyy-mm-dd hh:nn", "mmm d", "Short Date" and the like.
std::string formatDate(qmevents::Date date, std::string_view pattern);
/// `number` as Format writes it: "#,##0.00;(#,##0.00)", "0%", "Currency" and the like.
std::string formatNumber(double number, std::string_view pattern);

} // namespace refhost
