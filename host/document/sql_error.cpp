#include "host/document/sql_error.h"

namespace refhost {

qmevents::Error sqlError(SqlErrorNumber number, const std::string& description)
{
    return {static_cast<int>(number), "Document", description};
}

qmevents::Error positioned(const Refusal& refusal, std::string_view text)
{
    std::size_t line = 1, column = 1;
    for (const char c : text.substr(0, refusal.offset)) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            ++line;
            column = 1;
        } else if ((byte & 0xC0) != 0x80) {
            ++column;
        }
    }
    constexpr std::size_t longest = 60;
    std::string token = refusal.token;
    if (token.size() > longest) {
        std::size_t cut = longest;
        while ((static_cast<unsigned char>(token[cut]) & 0xC0) == 0x80) --cut;
        token = token.substr(0, cut) + "...";
    }
    const std::string where = token.empty() ? "at the end" : "at '" + token + "'";
    return sqlError(refusal.number, "Line " + std::to_string(line) + ", column " +
                                        std::to_string(column) + ", " + where + ": " +
                                        refusal.reason);
}

} // namespace refhost
