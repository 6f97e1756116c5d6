#include "host/demo/donors.h"

#include <algorithm>

#include "host/demo/names.h"

namespace refhost::demo {
namespace {

using qmevents::Date;

struct Identity {
    std::string display, first, last, email;
};

Identity personOf(Random& random)
{
    Identity person;
    person.first = firstName(random);
    person.last = surname(random);
    person.display = person.first + " " + person.last;
    person.email = emailAddress(person.first, person.last, random);
    return person;
}

Identity householdOf(Random& random)
{
    Identity household = personOf(random);
    std::string_view partner = firstName(random);
    while (partner == household.first) partner = firstName(random);
    household.first.append(" and ").append(partner);
    household.display = household.first + " " + household.last;
    return household;
}

Identity organisationOf(Random& random)
{
    Identity organisation;
    organisation.display = organisationName(random);
    organisation.last = organisation.display;
    organisation.email = emailAddress("", organisation.display, random);
    return organisation;
}

// Most give now and then, a few give always.
int generosityOf(Random& random)
{
    const int draw = random.between(1, 100);
    if (draw <= 62) return 1;
    if (draw <= 85) return random.between(2, 3);
    if (draw <= 96) return random.between(4, 6);
    return random.between(7, 9);
}

// More have joined lately than long ago.
std::vector<Date> joiningDates(Random& random, int count, Date today)
{
    std::vector<Date> dates;
    for (int index = 0; index < count; ++index) {
        const int latest = random.between(30, 3650);
        dates.push_back(today.plusDays(-random.between(30, latest)));
    }
    std::sort(dates.begin(), dates.end());
    return dates;
}

} // namespace

std::vector<Donor> makeDonors(RowWriter& rows, Random random, int count, Date today)
{
    static constexpr std::string_view kindNames[] = {"Person", "Household", "Organization"};
    std::vector<Donor> donors;
    for (const Date since : joiningDates(random, count, today)) {
        Donor donor;
        donor.since = since;
        donor.generosity = generosityOf(random);
        const int draw = random.between(1, 100);
        Identity identity;
        if (draw <= 64) {
            identity = personOf(random);
        } else if (draw <= 87) {
            donor.kind = Donor::Kind::household;
            identity = householdOf(random);
        } else {
            donor.kind = Donor::Kind::organisation;
            identity = organisationOf(random);
        }
        // Some addresses were never learnt.
        const std::string email = random.chance(78) ? identity.email : "";
        const std::string phone = random.chance(66) ? phoneNumber(random) : "";
        const std::string_view city = town(random);
        donor.id = rows.insert("donor_donors",
                               {text("display", identity.display),
                                text("firstname", identity.first), text("lastname", identity.last),
                                text("entitytype", kindNames[static_cast<int>(donor.kind)]),
                                text("email", email), text("phone", phone),
                                text("address", street(random)), text("city", city),
                                text("postalcode", postalCode(city)), date("created", since)});
        donors.push_back(donor);
    }
    return donors;
}

} // namespace refhost::demo
