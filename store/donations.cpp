#include "store/donations.h"

#include <cstdint>
#include <set>

#include "core/host.h"
#include "core/record_reader.h"

namespace qmevents {

void deleteDonationsOf(const std::vector<std::string>& queries)
{
    std::set<std::int32_t> done;
    for (const auto& query : queries) {
        // Gathered first: deleting may disturb the rows that are being read.
        std::vector<std::int32_t> gifts;
        RecordReader rows(query);
        if (rows.atEnd()) continue;
        for (const auto id = rows.column("Id"); !rows.atEnd(); rows.next()) {
            gifts.push_back(toInt32(id.value()));
        }
        for (const std::int32_t gift : gifts) {
            if (done.insert(gift).second) host().modules().donation().deleteDonation(gift);
        }
    }
}

} // namespace qmevents
