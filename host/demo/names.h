#pragma once

#include <string>
#include <string_view>

#include "host/demo/random.h"

// Names of people and places who do not exist, put together from common words.
namespace refhost::demo {

std::string surname(Random& random);
std::string_view firstName(Random& random);
std::string organisationName(Random& random);
/// A town of the few that the donors live in; towns near the organisation come up more often.
std::string_view town(Random& random);
std::string_view postalCode(std::string_view town);
std::string street(Random& random);
/// A number from a range that no telephone has.
std::string phoneNumber(Random& random);
/// "first.last" at a domain that no mail reaches; letters outside ASCII are written plainly.
std::string emailAddress(std::string_view first, std::string_view last, Random& random);

} // namespace refhost::demo
