#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What an organisation does year after year: the plans from which the demonstration's events are
// made, one event per series and year.
namespace refhost::demo {

/// The kinds of questions.
namespace fieldKind {
constexpr std::int16_t text = 1;
constexpr std::int16_t list = 2;
constexpr std::int16_t listOrText = 3;
constexpr std::int16_t date = 4;
constexpr std::int16_t checkBox = 6;
} // namespace fieldKind

/// A question that a reservation of the activity asks.
struct QuestionPlan {
    std::int16_t fieldType = 0;
    std::string_view name, description, defaultValue;
    /// The choices of a list or, of a text, what people write; separated by "|".
    std::string_view choices;

    bool isList() const
    {
        return fieldType == fieldKind::list || fieldType == fieldKind::listOrText;
    }
    std::vector<std::string> eachChoice() const;
};

struct ActivityPlan {
    std::string_view name, description;
    int price = 0, cost = 0, available = 0;
    bool sponsorship = false;
    bool unlimited = false;
    int demand = 1; ///< How often it is reserved, against the others of the event.
    std::span<const QuestionPlan> questions;
};

struct ExpensePlan {
    std::string_view description;
    int amount = 0;
    int daysBefore = 0; ///< Before the event; negative after it.
};

struct TaskPlan {
    std::string_view name, notes;
    int daysBefore = 0;
};

struct LocationPlan {
    std::string_view name, description, contact, address, phone, email, notes;
};

/// About when in the year; the event falls on the next `weekday` (1 for Sunday to 7 for Saturday).
struct Occasion {
    int month = 1, day = 1, weekday = 7;
    double starts = 18; ///< Hour of the day; 0 for a day without a time.
    double lasts = 3;   ///< Hours.
    int replyDaysBefore = 14;
};

struct Goals {
    int minimum = 0, maximum = 0; ///< Guests that there is room for.
    int revenue = 0, attendance = 0;
};

struct GuestPlan {
    std::string_view group;  ///< The invitation group that comes first.
    int listed = 60;         ///< Donors on the participant list.
    int reserving = 40;      ///< How many of a hundred that come reserve something.
    int giving = 10;         ///< How many of a hundred that come give beside that.
    bool drawsCrowd = false; ///< Whether, this year, about everybody is on the list.
};

struct EventSeries {
    std::string_view name, category, location;
    Occasion occasion;
    Goals goals;
    GuestPlan guests;
    std::string_view description, notes;
    std::span<const ActivityPlan> activities;
    std::span<const ExpensePlan> expenses;
    std::span<const TaskPlan> tasks;
};

/// By how much a `crowd` is larger than what the series has in other years; 1 for none.
int timesAsMany(const EventSeries& series, int crowd);

std::span<const EventSeries> eventSeries();
std::span<const LocationPlan> locations();
/// What makes one year's event differ from the last: "Under the Lanterns".
std::span<const std::string_view> themes();

} // namespace refhost::demo
