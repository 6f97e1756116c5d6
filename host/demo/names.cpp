#include "host/demo/names.h"

#include <algorithm>
#include <cctype>

namespace refhost::demo {
namespace {

constexpr std::string_view beginnings[] = {
    "Alder",  "Ash",   "Barley", "Birch",  "Black", "Bright", "Brook",  "Clay",  "Cold",
    "Copper", "Dale",  "East",   "Elder",  "Fair",  "Fern",   "Field",  "Fox",   "Glen",
    "Gold",   "Green", "Harrow", "Hart",   "Hazel", "Heath",  "High",   "Holly", "Iron",
    "Lake",   "Lang",  "Lark",   "Linden", "Long",  "Marsh",  "Mead",   "Mill",  "Moor",
    "North",  "Oak",   "Otter",  "Peak",   "Penny", "Raven",  "Red",    "River", "Rock",
    "Rose",   "Rowan", "Sand",   "Silver", "Snow",  "South",  "Summer", "Swan",  "Thorn",
    "Timber", "Water", "West",   "Whit",   "Wild",  "Winter", "Wood",   "Wren"};

constexpr std::string_view endings[] = {
    "bank",  "beck",  "berry", "born", "bridge", "brook", "burn",   "bury", "combe", "cote",
    "croft", "cross", "dale",  "den",  "down",   "field", "ford",   "gate", "grove", "ham",
    "hill",  "holm",  "hurst", "land", "ley",    "low",   "man",    "mere", "mont",  "moor",
    "pool",  "ridge", "shaw",  "side", "stead",  "ston",  "thorpe", "ton",  "vale",  "wall",
    "water", "way",   "well",  "wick", "wold",   "wood",  "worth"};

// A few that are written with letters outside ASCII, as in any list of donors.
constexpr std::string_view surnamesAbroad[] = {
    "Åkerlund",  "Bergström",  "Çelikdağ", "Dvořáková",  "Fernández-Olmo", "Grünewaldt",
    "Ibáñezgui", "Järvelahti", "Łąkowska", "Müllerbach", "Nørregaarden",   "Sørlandsvik"};

constexpr std::string_view firstNames[] = {
    "Ada",     "Alice",  "Amir",   "Anders", "Anita",  "Arthur", "Beatrice", "Ben",    "Bruno",
    "Carla",   "Cecil",  "Chloë",  "Clara",  "Dana",   "Daniel", "David",    "Delia",  "Edith",
    "Elena",   "Emil",   "Emma",   "Esther", "Eva",    "Felix",  "Fiona",    "Frank",  "Grace",
    "Greta",   "Hannah", "Hector", "Helen",  "Henry",  "Hugo",   "Ida",      "Ines",   "Iris",
    "Jack",    "Jane",   "Jonas",  "Julia",  "Karim",  "Kate",   "Laura",    "Leo",    "Lena",
    "Lucas",   "Lucía",  "Mabel",  "Marcus", "Maria",  "Martin", "Maya",     "Miriam", "Nadia",
    "Nathan",  "Nina",   "Noah",   "Olga",   "Oliver", "Oscar",  "Paula",    "Peter",  "Priya",
    "Quentin", "Rachel", "Ravi",   "Renée",  "Robin",  "Rosa",   "Ruth",     "Samuel", "Sarah",
    "Simon",   "Sonia",  "Stella", "Tess",   "Thomas", "Ursula", "Vera",     "Victor", "Wendy",
    "William", "Yusuf",  "Zoë"};

constexpr std::string_view trades[] = {
    "Bakery",        "Bookshop",        "Builders",        "Dental Practice", "Engineering",
    "Florists",      "Foundation",      "Garage",          "Gardening Club",  "Hardware",
    "Insurance",     "Joinery",         "Legal Partners",  "Music Society",   "Opticians",
    "Pharmacy",      "Printing Works",  "Property Trust",  "Savings Union",   "School Parents",
    "Shipping",      "Solar Co-op",     "Tea Rooms",       "Veterinary Care", "Walking Club",
    "Water Company", "Women's Network", "Youth Foundation"};

struct Town {
    std::string_view name, postalCode;
    int share; // of a hundred donors
};
constexpr Town towns[] = {{"Marlow Ferry", "40110", 34},     {"Eastbrook", "40122", 18},
                          {"Harrowgate Mills", "40135", 12}, {"Linden Vale", "40204", 10},
                          {"Otterpool", "40218", 8},         {"Saint Orrin", "40311", 7},
                          {"Fernside", "40340", 6},          {"Upper Thornwick", "40407", 5}};

constexpr std::string_view streets[] = {
    "Acorn Street", "Bell Lane",     "Bridge Street", "Chapel Hill",  "Church Walk",
    "Cooper's Row", "Elm Avenue",    "Ferry Road",    "Garden Court", "Granary Lane",
    "Harbour View", "Linden Avenue", "Market Square", "Meadow Way",   "Mill Road",
    "Orchard Lane", "Quay Street",   "School Lane",   "Station Road", "Windmill Hill"};

// "Zoë" as "zoe": the base letter of each character that the lists above hold.
std::string plainLetters(std::string_view text)
{
    struct Letter {
        std::string_view from;
        char to;
    };
    static constexpr Letter letters[] = {{"Å", 'a'}, {"á", 'a'}, {"ä", 'a'}, {"ą", 'a'},
                                         {"Ç", 'c'}, {"ğ", 'g'}, {"é", 'e'}, {"ë", 'e'},
                                         {"í", 'i'}, {"Ł", 'l'}, {"ñ", 'n'}, {"ö", 'o'},
                                         {"ø", 'o'}, {"ř", 'r'}, {"ü", 'u'}};
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const auto isHere = [&](const Letter& letter) {
            return text.substr(at, letter.from.size()) == letter.from;
        };
        const auto* found = std::find_if(std::begin(letters), std::end(letters), isHere);
        if (found != std::end(letters)) {
            plain += found->to;
            at += found->from.size();
        } else {
            const auto byte = static_cast<unsigned char>(text[at++]);
            if (std::isalpha(byte)) plain += static_cast<char>(std::tolower(byte));
        }
    }
    return plain;
}

} // namespace

std::string surname(Random& random)
{
    if (random.chance(3)) return std::string(random.pick(surnamesAbroad));
    const std::string_view beginning = random.pick(beginnings);
    std::string_view ending = random.pick(endings);
    // "Woodwood" and "Moormoor" are nobody's name.
    while (plainLetters(beginning) == ending) ending = random.pick(endings);
    return std::string(beginning).append(ending);
}

std::string_view firstName(Random& random) { return random.pick(firstNames); }

std::string organisationName(Random& random)
{
    std::string name = random.chance(60) ? surname(random) : std::string(town(random));
    return name.append(" ").append(random.pick(trades));
}

std::string_view town(Random& random)
{
    int draw = random.between(1, 100);
    for (const Town& candidate : towns) {
        draw -= candidate.share;
        if (draw <= 0) return candidate.name;
    }
    return towns[0].name;
}

std::string_view postalCode(std::string_view name)
{
    const auto* found = std::find_if(std::begin(towns), std::end(towns),
                                     [&](const Town& candidate) { return candidate.name == name; });
    return found == std::end(towns) ? "" : found->postalCode;
}

std::string street(Random& random)
{
    return std::to_string(random.between(1, 180)).append(" ").append(random.pick(streets));
}

std::string phoneNumber(Random& random)
{
    return "(" + std::to_string(random.between(201, 989)) + ") 555-01" +
           std::to_string(random.between(10, 99));
}

std::string emailAddress(std::string_view first, std::string_view last, Random& random)
{
    static constexpr std::string_view domains[] = {"example.com", "example.net", "example.org"};
    std::string address = plainLetters(first);
    if (!address.empty()) address += ".";
    address += plainLetters(last);
    if (random.chance(40)) address += std::to_string(random.between(2, 99));
    return address.append("@").append(random.pick(domains));
}

} // namespace refhost::demo
