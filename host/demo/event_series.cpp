#include "host/demo/event_series.h"

#include <algorithm>

namespace refhost::demo {
namespace {

constexpr QuestionPlan meal[] = {{fieldKind::list, "Meal", "What the guest would like to eat.",
                                  "Fish", "Fish|Poultry|Vegetarian|Vegan"}};
constexpr QuestionPlan shirt[] = {
    {fieldKind::list, "Shirt size", "For the runner's shirt.", "M", "XS|S|M|L|XL"}};
constexpr QuestionPlan handicap[] = {
    {fieldKind::text, "Handicap", "The player's official handicap.", "", "5|9|14|18|22|28|36"}};
constexpr QuestionPlan seating[] = {{fieldKind::listOrText, "Seat with",
                                     "People to sit near, or a table.", "",
                                     "Anywhere|Near the stage|Near the door"}};
constexpr QuestionPlan logo[] = {
    {fieldKind::checkBox, "Logo received", "The sponsor has sent a logo to print.", "0", ""}};
constexpr QuestionPlan goods[] = {{fieldKind::text, "Goods", "What the stall sells.", "",
                                   "Jam & honey|Second-hand books|Wooden toys|Knitted \"things\""}};
constexpr QuestionPlan donorSince[] = {
    {fieldKind::date, "Donor since", "When the guest first gave, for the name badge.", "", ""}};
constexpr QuestionPlan team[] = {
    {fieldKind::text, "Team name", "As it is called at the finish.", "",
     "The Late Starters|Quay Street Striders|Slow & Steady|Café Allegro|<Enter> Athletics"},
    {fieldKind::list, "Start wave", "Ten minutes apart, the fastest first.", "Second",
     "First|Second|Third"},
    {fieldKind::listOrText, "Shirts", "Sizes for the whole team.", "As in the list by e-mail",
     "As in the list by e-mail|All M|Three M, three L"},
    {fieldKind::date, "Running together since", "For the speaker at the start.", "", ""},
    {fieldKind::checkBox, "Needs a tent", "Three metres by three, beside the boathouse.", "0", ""}};

constexpr ActivityPlan galaActivities[] = {
    {"Dinner Seat", "Reception, three courses and dancing.", 150, 62, 140, false, false, 12, meal},
    {"Table of Ten", "A whole table with its own waiter.", 1400, 600, 6, false, false, 3, seating},
    {"Raffle Book", "Twenty tickets for the evening's raffle.", 40, 2, 0, false, true, 4, {}},
    {"Gold Sponsor", "Name on the invitation, table of ten.", 5000, 700, 3, true, false, 1, logo},
    {"Silver Sponsor", "Name in the programme, four seats.", 2000, 280, 6, true, false, 2, logo}};
constexpr ActivityPlan auctionActivities[] = {
    {"Bidder Seat", "Entry with a bidding card and supper.", 60, 24, 110, false, false, 10, {}},
    {"Preview Evening", "A first look with the artists.", 35, 10, 40, false, false, 4, {}},
    {"Printed Catalogue", "All works in colour.", 18, 7, 150, false, false, 4, {}},
    {"Patron of the Auction", "Named beside the works on show.", 1500, 90, 6, true, false, 1,
     logo}};
constexpr ActivityPlan golfActivities[] = {
    {"Player", "Green fee, lunch and prize giving.", 180, 95, 64, false, false, 10, handicap},
    {"Team of Four", "Four players who start together.", 680, 380, 12, false, false, 4, handicap},
    {"Dinner Guest", "Dinner and prize giving only.", 65, 38, 40, false, false, 3, meal},
    {"Hole Sponsor", "A sign on one of the eighteen holes.", 750, 60, 18, true, false, 4, logo},
    {"Cart Sponsor", "Name on every cart.", 1800, 120, 2, true, false, 1, logo}};
constexpr ActivityPlan concertActivities[] = {
    {"Front Stalls", "Rows A to F.", 55, 12, 60, false, false, 6, {}},
    {"Balcony", "Unnumbered seats.", 30, 8, 120, false, false, 9, {}},
    {"Student Seat", "With a card, balcony only.", 12, 8, 40, false, false, 3, {}},
    {"Chair of the Orchestra",
     "A musician's chair in your name.",
     400,
     20,
     20,
     true,
     false,
     2,
     {}}};
constexpr ActivityPlan volunteerActivities[] = {
    {"Supper", "A warm supper as thanks; no charge.", 0, 14, 80, false, false, 10, meal},
    {"Guest of a Volunteer", "Supper for a friend.", 15, 14, 30, false, false, 3, meal}};
constexpr ActivityPlan runActivities[] = {
    {"Ten Kilometres", "Chip timing and a shirt.", 35, 11, 150, false, false, 8, shirt},
    {"Five Kilometres", "Walk or run.", 20, 9, 200, false, false, 9, shirt},
    {"Children's Mile", "Up to twelve years.", 5, 3, 140, false, false, 4, shirt},
    {"Team Entry", "Up to six runners of one firm.", 150, 54, 40, false, false, 5, team},
    {"Kilometre Sponsor", "A banner at one kilometre.", 500, 45, 10, true, false, 2, logo},
    {"Water Station Sponsor", "Cups and banners.", 900, 110, 4, true, false, 1, logo}};
constexpr ActivityPlan gardenActivities[] = {
    {"Garden Ticket", "Tea, cake and the walled garden.", 25, 7, 110, false, false, 10, {}},
    {"Plant Voucher", "For the plant stall.", 10, 6, 0, false, true, 5, {}},
    {"Guided Walk", "With the head gardener, groups of twelve.", 15, 2, 36, false, false, 4, {}}};
constexpr ActivityPlan familyActivities[] = {
    {"Family Pass", "Two adults and all their children.", 30, 8, 120, false, false, 10, {}},
    {"Adult", "All stalls and the brass band.", 12, 3, 150, false, false, 6, {}},
    {"Stall", "A stall of three metres.", 80, 15, 30, false, false, 3, goods},
    {"Stage Sponsor", "Name over the stage all day.", 1200, 75, 2, true, false, 1, logo}};
constexpr ActivityPlan breakfastActivities[] = {
    {"Breakfast Seat", "A cooked breakfast and a report on the year.", 45, 22, 60, false, false, 9,
     donorSince},
    {"Table Host", "Brings seven guests.", 320, 176, 6, false, false, 2, seating}};
constexpr ActivityPlan carolActivities[] = {
    {"Seat", "Nave and aisles.", 18, 4, 200, false, false, 10, {}},
    {"Mulled Wine", "In the crypt afterwards.", 6, 2, 0, false, true, 5, {}},
    {"Candle Sponsor", "Two hundred candles by your firm.", 600, 40, 5, true, false, 1, {}}};

constexpr ExpensePlan galaExpenses[] = {{"Hall hire", 3200, 120},
                                        {"Catering deposit", 4500, 60},
                                        {"Band", 1800, 2},
                                        {"Flowers and linen", 960, 3},
                                        {"Printed invitations", 540, 75},
                                        {"Catering balance", 7400, -6},
                                        {"Returned linen deposit", -200, -12}};
constexpr ExpensePlan auctionExpenses[] = {{"Insurance of the works", 870, 20},
                                           {"Catalogue printing", 1260, 25},
                                           {"Auctioneer's fee", 1000, -3},
                                           {"Transport and hanging", 640, 4}};
constexpr ExpensePlan golfExpenses[] = {{"Course hire", 4200, 30},
                                        {"Prizes", 780, 8},
                                        {"Lunch and dinner", 3100, -5},
                                        {"Signs for the holes", 420, 10}};
constexpr ExpensePlan concertExpenses[] = {
    {"Hall and staff", 1500, 30}, {"Orchestra", 3800, -2}, {"Programme printing", 310, 9}};
constexpr ExpensePlan smallExpenses[] = {{"Food and drink", 640, 1}, {"Decoration", 95, 2}};
constexpr ExpensePlan runExpenses[] = {{"Road closure permit", 520, 90},
                                       {"Timing chips", 1150, 15},
                                       {"Shirts", 2340, 30},
                                       {"First aid service", 600, -4},
                                       {"Medals", 480, 21}};
constexpr ExpensePlan fairExpenses[] = {
    {"Tents and tables", 890, 7}, {"Brass band", 400, 0}, {"Leaflets", 220, 40}};

constexpr TaskPlan dinnerTasks[] = {
    {"Book the hall", "Ask for the same room as last year.", 150},
    {"Agree on the menu", "One dish without meat, one without gluten.", 70},
    {"Send invitations", "Board and sponsors first, the others a week later.", 63},
    {"Draw the seating plan", "Wishes are in the reservations.", 6},
    {"Write to thank the sponsors", "", -10}};
constexpr TaskPlan sportTasks[] = {{"Apply for the permit", "The town needs twelve weeks.", 120},
                                   {"Order shirts and prizes", "", 45},
                                   {"Find marshals", "At least one for each kilometre.", 30},
                                   {"Publish the results", "", -2}};
constexpr TaskPlan stageTasks[] = {{"Sign the performers", "", 130},
                                   {"Print tickets", "Numbered for the stalls only.", 50},
                                   {"Brief the ushers", "Six at the doors, two in the balcony.", 2},
                                   {"Settle with the box office", "", -7}};
constexpr TaskPlan smallTasks[] = {{"Choose a date with the committee", "", 100},
                                   {"Order food", "A tenth more than the replies.", 5},
                                   {"Send pictures to those who came", "", -8}};

constexpr EventSeries series[] = {
    {"Winter Gala",
     "Gala",
     "Harbour Hall",
     {2, 8, 7, 18.5, 5.5, 21},
     {60, 180, 32000, 110},
     {"Board", 210, 55, 18},
     "A black-tie dinner with dancing and a raffle.\r\nThe evening pays for a year of the food "
     "programme.",
     "Parking behind the hall is free after six. The band needs the stage from four.",
     galaActivities,
     galaExpenses,
     dinnerTasks},
    {"Volunteer Evening",
     "Volunteer Evening",
     "Community Centre",
     {3, 14, 5, 19, 3, 7},
     {0, 90, 0, 55},
     {"Volunteers", 110, 60, 4},
     "Our thanks to everybody who packed, drove, called and carried.",
     "No speeches longer than three minutes.",
     volunteerActivities,
     smallExpenses,
     smallTasks},
    {"Spring Concert",
     "Concert",
     "Town Concert Hall",
     {4, 18, 6, 19.5, 2.25, 10},
     {60, 260, 7500, 90},
     {"Major Donors", 180, 50, 9},
     "The town's orchestra plays for the music lessons that we pay for.",
     "Interval at about half past eight; the choir enters from the left.",
     concertActivities,
     concertExpenses,
     stageTasks},
    {"Riverside Run",
     "Sports",
     "Riverside Park",
     {5, 16, 1, 9, 4, 5},
     {80, 400, 9000, 130},
     {"Volunteers", 240, 65, 6, true},
     "Five and ten kilometres along the river, and a mile for children.",
     "In heavy rain the course is shortened to the upper park.",
     runActivities,
     runExpenses,
     sportTasks},
    {"Golf Day",
     "Sports",
     "Millbrook Golf Course",
     {6, 12, 6, 8.5, 10, 14},
     {32, 96, 18000, 64},
     {"Sponsors", 140, 60, 10},
     "Shotgun start at half past eight, lunch on the terrace, dinner and prizes.",
     "Carts are for players with a certificate only.",
     golfActivities,
     golfExpenses,
     sportTasks},
    {"Garden Party",
     "Other",
     "Linden House Gardens",
     {7, 10, 7, 14, 4, 10},
     {30, 110, 2600, 65},
     {"Major Donors", 120, 55, 8},
     "Tea in the walled garden, with plants to take home.",
     "If it rains: the orangery, at most ninety people.",
     gardenActivities,
     smallExpenses,
     smallTasks},
    {"Family Day",
     "Other",
     "Northfield School Grounds",
     {9, 5, 7, 0, 8, 0},
     {0, 0, 5000, 80},
     {"Volunteers", 150, 50, 5},
     "Stalls, games, a brass band and a very long cake.",
     "All day; stalls are set up from seven in the morning.",
     familyActivities,
     fairExpenses,
     smallTasks},
    {"Art Auction",
     "Auction",
     "The Old Granary",
     {10, 9, 5, 19, 4, 12},
     {40, 110, 11000, 75},
     {"Major Donors", 150, 50, 15},
     "Forty works by local artists, who give half of the price or all of it.",
     "The auctioneer keeps no commission. Works are collected on the following day.",
     auctionActivities,
     auctionExpenses,
     stageTasks},
    {"Donor Breakfast",
     "Other",
     "Harbour Hall",
     {11, 6, 4, 8, 1.5, 6},
     {24, 70, 4500, 50},
     {"Major Donors", 110, 45, 20},
     "What your gifts did this year, told by those who received them.",
     "Ends at half past nine sharp: people go on to work.",
     breakfastActivities,
     smallExpenses,
     dinnerTasks},
    {"Carols by Candlelight",
     "Concert",
     "Saint Orrin's Church",
     {12, 11, 6, 20, 1.75, 0},
     {0, 220, 3500, 70},
     {"Press", 140, 50, 7},
     "Carols old and new with the children's choir.",
     "Doors open at seven. Candles are electric in the aisles.",
     carolActivities,
     fairExpenses,
     stageTasks},
};

constexpr LocationPlan places[] = {
    {"Harbour Hall", "Large hall with a stage, on the quay.", "Edith Quayside",
     "1 Quay Street\r\nMarlow Ferry 40110", "(212) 555-0140", "hall@example.org",
     "250 seats at tables. Kitchen for caterers."},
    {"Town Concert Hall", "Stalls and balcony, 380 seats.", "Box office",
     "Market Square 4\r\nMarlow Ferry 40110", "(212) 555-0152", "boxoffice@example.org", ""},
    {"Riverside Park", "Start and finish at the boathouse.", "Parks office",
     "Ferry Road\r\nMarlow Ferry 40110", "(212) 555-0161", "parks@example.org",
     "Power from the boathouse; toilets must be hired."},
    {"Millbrook Golf Course", "Eighteen holes, club house.", "Club secretary",
     "Mill Road 200\r\nHarrowgate Mills 40135", "(318) 555-0118", "golf@example.net", ""},
    {"Linden House Gardens", "Walled garden and orangery.", "Head gardener",
     "Linden Avenue 9\r\nLinden Vale 40204", "(318) 555-0177", "", "No cars past the gate."},
    {"Northfield School Grounds", "Field, gymnasium and yard.", "Caretaker",
     "School Lane 2\r\nEastbrook 40122", "(212) 555-0199", "", "Free of charge at weekends."},
    {"The Old Granary", "Gallery on two floors.", "Hugo Granfield",
     "Granary Lane 7\r\nMarlow Ferry 40110", "(212) 555-0123", "granary@example.com",
     "Goods lift to the upper floor."},
    {"Community Centre", "Our own rooms.", "Front desk", "Chapel Hill 11\r\nMarlow Ferry 40110",
     "(212) 555-0101", "desk@example.org", ""},
    {"Saint Orrin's Church", "Nave for 320.", "Church office", "Church Walk\r\nSaint Orrin 40311",
     "(407) 555-0184", "", "Heating must be ordered two days ahead."},
};

constexpr std::string_view yearThemes[] = {"Under the Lanterns", "A Table for Everyone",
                                           "Home Waters", "Ten Thousand Meals", "New Roots"};

} // namespace

std::vector<std::string> QuestionPlan::eachChoice() const
{
    std::vector<std::string> each;
    std::string_view rest = choices;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('|'), rest.size());
        each.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return each;
}

int timesAsMany(const EventSeries& one, int crowd)
{
    return std::max(1, crowd / std::max(1, one.guests.listed));
}

std::span<const EventSeries> eventSeries() { return series; }
std::span<const LocationPlan> locations() { return places; }
std::span<const std::string_view> themes() { return yearThemes; }

} // namespace refhost::demo
