#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "automation/error.h"

namespace refhost {

/// Error numbers of the document, those of the data access layer that hosts of this kind use.
enum class SqlErrorNumber : int {
    statement = -2147217900, ///< The text is not accepted, or the engine failed to run it.
    integrity = -2147217873, ///< NOT NULL, UNIQUE or PRIMARY KEY broken.
    badValue = -2147217913,  ///< A value that cannot be converted to the type where it stands.
    overflow = -2147217833,  ///< A text too long or a number too big for its column.
    noSuchTable = -2147217865,
    busy = -2147217871,    ///< Another session is writing and did not finish in time.
    notOpen = -2147217904, ///< A cell was read before the first or after the last row.
};

/// The error that every failure of the document becomes; its source is "Document".
qmevents::Error sqlError(SqlErrorNumber number, const std::string& description);

/// Why a statement was not accepted, and where in its text. Thrown by the front end's parts; the
/// session turns it into an Error that names line, column and token.
struct Refusal {
    std::size_t offset = 0; ///< In bytes; the length of the text for "at the end".
    std::string token;
    std::string reason;
    SqlErrorNumber number = SqlErrorNumber::statement;
};

/// `refusal` with its line and column in `text` (both counted from 1, columns in characters).
qmevents::Error positioned(const Refusal& refusal, std::string_view text);

} // namespace refhost
