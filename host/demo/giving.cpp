#include "host/demo/giving.h"

#include <algorithm>

namespace refhost::demo {
namespace {

using qmevents::Currency;
using qmevents::Date;

constexpr int yearsOfGiving = 4;
constexpr int atAnEvent = 3;     // among the sources
constexpr int eventCampaign = 5; // among the campaigns
constexpr int firstAppealYear = 2023;

struct Payment {
    Date expected;
    Currency amount;
    Date received; // the zero date while it is outstanding
};

struct Gift {
    std::size_t donor = 0;
    Date created;
    bool pledge = false, deleted = false;
    std::int32_t fund = 0, campaign = 0, source = 0, event = 0, reservation = 0;
    std::string_view note = {};
    std::vector<Payment> payments = {};
};

class GiftPlanner {
public:
    GiftPlanner(const Urn& urn, const Codes& codes, Random random, Date today)
        : urn_(urn), codes_(codes), random_(random), today_(today)
    {
    }

    void general(int count);
    void forEvent(const MadeEvent& event);
    std::vector<Gift> takeInOrder();

private:
    Date someDay();
    Currency amountOf(const Donor& donor);
    Gift newGift(std::size_t donor, Date created);
    void payAtOnce(Gift& gift, Currency amount);
    void payInParts(Gift& gift, Currency amount);

    const Urn& urn_;
    const Codes& codes_;
    Random random_;
    Date today_;
    std::vector<Gift> gifts_;
};

// A third of all gifts come in the last five weeks of a year.
Date GiftPlanner::someDay()
{
    const Date first = today_.plusMonths(-12 * yearsOfGiving);
    for (;;) {
        const Date day = first.plusDays(random_.between(1, yearsOfGiving * 365));
        const Date december = Date::of(day.civil().year, 12, random_.between(1, 31));
        const Date chosen = random_.chance(28) ? december : day;
        if (first < chosen && chosen < today_) return chosen;
    }
}

Currency GiftPlanner::amountOf(const Donor& donor)
{
    static constexpr int amounts[] = {10, 15, 20,  20,  25,  25,  30,  40,  50,  50,
                                      50, 75, 100, 100, 120, 150, 200, 250, 500, 1000};
    const int units = random_.pick(amounts);
    if (donor.kind == Donor::Kind::organisation) return Currency::fromUnits(units * 5LL);
    // Some convert from another money, or add the fee.
    const int cents = random_.chance(5) ? random_.between(1, 99) : 0;
    return Currency::fromUnits(units) + Currency::fromScaled(cents * 100LL);
}

Gift GiftPlanner::newGift(std::size_t donor, Date created)
{
    static constexpr std::string_view notes[] = {"Sent with a kind letter.", "Wants no receipt.",
                                                 "In memory of a friend.", "First gift."};
    Gift gift{.donor = donor, .created = created};
    gift.fund = random_.chance(45) ? codes_.funds.front() : random_.pick(codes_.funds);
    const int appeal = created.civil().year - firstAppealYear;
    if (random_.chance(70) && appeal >= 0 && appeal < eventCampaign) {
        gift.campaign = codes_.campaigns[static_cast<std::size_t>(appeal)];
    }
    gift.source = random_.pick(codes_.sources);
    if (random_.chance(3)) gift.note = random_.pick(notes);
    gift.deleted = random_.chance(1);
    return gift;
}

void GiftPlanner::payAtOnce(Gift& gift, Currency amount)
{
    gift.payments.push_back({gift.created, amount, gift.created});
}

// A pledge: equal parts on the same day of every month or quarter, most of them received in time.
void GiftPlanner::payInParts(Gift& gift, Currency amount)
{
    static constexpr int counts[] = {2, 3, 4, 6, 12};
    const int count = random_.pick(counts);
    const int months = random_.chance(50) ? 1 : 3;
    gift.pledge = true;
    amount = std::min(amount, Currency::fromUnits(250));
    for (int part = 0; part < count; ++part) {
        Payment payment{gift.created.plusMonths(part * months), amount, {}};
        const Date arrives = payment.expected.plusDays(random_.between(0, 18));
        if (arrives < today_ && random_.chance(91)) payment.received = arrives;
        gift.payments.push_back(payment);
    }
}

void GiftPlanner::general(int count)
{
    for (int index = 0; index < count; ++index) {
        const Date day = someDay();
        const auto donor = urn_.draw(random_, day);
        if (!donor) continue;
        Gift gift = newGift(*donor, day);
        const Currency amount = amountOf(urn_.donors()[*donor]);
        if (random_.chance(13)) {
            payInParts(gift, amount);
        } else {
            payAtOnce(gift, amount);
        }
        gifts_.push_back(std::move(gift));
    }
}

void GiftPlanner::forEvent(const MadeEvent& event)
{
    const auto ofEvent = [&](std::size_t donor, Date day) {
        Gift gift = newGift(donor, std::min(day.datePart(), today_.plusDays(-1)));
        gift.campaign = codes_.campaigns[eventCampaign];
        gift.source = codes_.sources[atAnEvent];
        return gift;
    };
    for (const MadeReservation& reservation : event.reservations) {
        if (reservation.dueByGift <= Currency{}) continue;
        Gift gift = ofEvent(reservation.donor, reservation.date);
        gift.deleted = false;
        gift.reservation = reservation.id;
        if (random_.chance(50)) gift.event = event.id;
        payAtOnce(gift, reservation.dueByGift);
        gifts_.push_back(std::move(gift));
    }
    if (event.start > today_ || event.cancelled) return;
    for (const std::size_t guest : event.guests) {
        if (!random_.chance(event.series->guests.giving)) continue;
        Gift gift = ofEvent(guest, event.start.plusDays(random_.between(0, 20)));
        gift.event = event.id;
        const Currency amount = amountOf(urn_.donors()[guest]);
        if (random_.chance(25)) {
            payInParts(gift, amount);
        } else {
            payAtOnce(gift, amount);
        }
        gifts_.push_back(std::move(gift));
    }
}

std::vector<Gift> GiftPlanner::takeInOrder()
{
    std::stable_sort(gifts_.begin(), gifts_.end(),
                     [](const Gift& a, const Gift& b) { return a.created < b.created; });
    return std::move(gifts_);
}

struct Written {
    std::int32_t gift = 0, firstPayment = 0;
};

Written write(RowWriter& rows, const Urn& urn, const Gift& gift)
{
    Written written;
    written.gift = rows.insert(
        "donor_gifts", {key("donorId", urn.donors()[gift.donor].id), date("created", gift.created),
                        yesNo("pledge", gift.pledge), yesNo("deleted", gift.deleted),
                        key("FKFund", gift.fund), key("FKCampaign", gift.campaign),
                        key("FKSource", gift.source), key("FKEventId", gift.event),
                        key("FKReservationId", gift.reservation), text("note", gift.note)});
    if (gift.deleted) return written; // its payments went with it
    for (const Payment& payment : gift.payments) {
        const bool received = payment.received.hasDate();
        const std::int32_t id = rows.insert(
            "donor_gifts_payments",
            {key("giftId", written.gift), date("expectedDate", payment.expected),
             money("expectedAmount", payment.amount), date("actualDate", payment.received),
             money("actualAmount", received ? payment.amount : Currency{}),
             key("FKFund", gift.fund)});
        if (written.firstPayment == 0) written.firstPayment = id;
    }
    return written;
}

// A firm doubles what one of its people gave: both rows name each other.
void writeMatch(RowWriter& rows, const Urn& urn, Gift gift, std::size_t firm,
                const Written& matched)
{
    gift.donor = firm;
    gift.note = "Matches a gift of our staff.";
    gift.event = gift.reservation = 0;
    const Written match = write(rows, urn, gift);
    rows.update("donor_gifts", match.gift, key("FKMatch", matched.firstPayment));
    rows.update("donor_gifts_payments", matched.firstPayment, key("FKMatch", match.gift));
}

} // namespace

int makeGifts(RowWriter& rows, const Urn& urn, const Codes& codes,
              const std::vector<MadeEvent>& events, Random random, int count, Date today)
{
    GiftPlanner planner(urn, codes, random, today);
    planner.general(count);
    for (const MadeEvent& event : events) planner.forEvent(event);
    int written = 0;
    for (const Gift& gift : planner.takeInOrder()) {
        const Written row = write(rows, urn, gift);
        ++written;
        if (gift.pledge || gift.deleted || !random.chance(2)) continue;
        const auto firm = urn.draw(random, gift.created);
        if (!firm || urn.donors()[*firm].kind != Donor::Kind::organisation) continue;
        writeMatch(rows, urn, gift, *firm, row);
        ++written;
    }
    return written;
}

} // namespace refhost::demo
