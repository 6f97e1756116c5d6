#include "host/document/reserved_words.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "automation/text.h"

namespace refhost {
namespace {

constexpr std::string_view sqlServerWords =
    "add all alter and any as asc authorization backup begin between break browse bulk by cascade "
    "case check checkpoint close clustered coalesce collate column commit compute constraint "
    "contains containstable continue convert create cross current current_date current_time "
    "current_timestamp current_user cursor database dbcc deallocate declare default delete deny "
    "desc disk distinct distributed double drop dump else end errlvl escape except exec execute "
    "exists exit external fetch file fillfactor for foreign freetext freetexttable from full "
    "function goto grant group having holdlock identity identity_insert identitycol if in index "
    "inner insert intersect into is join key kill left like lineno load merge national nocheck "
    "nonclustered not null nullif of off offsets on open opendatasource openquery openrowset "
    "openxml option or order outer over percent pivot plan precision primary print proc procedure "
    "public raiserror read readtext reconfigure references replication restore restrict return "
    "revert revoke right rollback rowcount rowguidcol rule save schema securityaudit select "
    "session_user set setuser shutdown some statistics system_user table tablesample textsize then "
    "to top tran transaction trigger truncate tsequal union unique unpivot update updatetext use "
    "user values varying view waitfor when where while with writetext";

constexpr std::string_view jetWords =
    "add all alter and any as asc between by check column constraint counter create currency "
    "database datetime delete desc distinct distinctrow double drop eqv exists false foreign from "
    "group having imp in index inner insert into is join key left like long memo mod not null on "
    "or order outer parameters percent pivot primary procedure references right select set short "
    "table text top transform true union unique update user values view where with xor yesno";

std::vector<std::string_view> sortedWords(std::string_view list)
{
    std::vector<std::string_view> words;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t end = std::min(list.find(' ', at), list.size());
        words.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    std::sort(words.begin(), words.end());
    return words;
}

} // namespace

bool isReserved(Dialect dialect, std::string_view word)
{
    static const std::vector<std::string_view> sqlServer = sortedWords(sqlServerWords);
    static const std::vector<std::string_view> jet = sortedWords(jetWords);
    const auto& words = dialect == Dialect::sqlServer ? sqlServer : jet;
    return std::binary_search(words.begin(), words.end(), qmevents::text::lowerAscii(word));
}

} // namespace refhost
