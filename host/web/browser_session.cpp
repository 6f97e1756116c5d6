#include "host/web/browser_session.h"

#include <random>
#include <utility>

#include "automation/clock.h"
#include "automation/conversions.h"
#include "automation/locale.h"
#include "host/web/wire_value.h"

namespace refhost {

using nlohmann::json;
using qmevents::Locale;

namespace {

constexpr auto longAbsence = std::chrono::minutes(10);

json localeData(const Locale& locale)
{
    constexpr std::array orders{"mdy", "dmy", "ymd"};
    return {{"order", orders[static_cast<std::size_t>(locale.order)]},
            {"dateSeparator", std::string(1, locale.dateSeparator)},
            {"twelveHours", locale.twelveHours},
            {"currencySymbol", locale.currencySymbol},
            {"symbolLeads", locale.symbolLeads},
            {"decimalMark", locale.decimalMark},
            {"groupMark", locale.groupMark}};
}

std::string dayText(qmevents::Date date) { return date.iso().substr(0, 10); }

} // namespace

/// What lives on the session's thread. The desk goes before the session whose objects it holds.
struct BrowserSession::OnThread {
    std::unique_ptr<WebFrontEnd> frontEnd;
    std::unique_ptr<SignedIn> signedIn;
    std::unique_ptr<Desk> desk;
};

std::string randomText(std::size_t bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::random_device source;
    std::string text;
    for (std::size_t i = 0; i < bytes; ++i) {
        const unsigned int byte = source() & 0xFFU;
        text += {digits[byte >> 4U], digits[byte & 0xFU]};
    }
    return text;
}

BrowserSession::BrowserSession(Backend& backend, const std::string& user,
                               std::chrono::milliseconds grace,
                               std::shared_ptr<SignInProgress> progress)
    : token_(randomText(32)), views_(grace), lastUsed_(std::chrono::steady_clock::now()),
      onThread_(std::make_unique<OnThread>()),
      apartment_(
          [this, &backend, user, progress = std::move(progress)] {
              auto& mine = *onThread_;
              mine.frontEnd = std::make_unique<WebFrontEnd>(apartment_, views_);
              mine.frontEnd->beginSignIn(progress);
              mine.signedIn = backend.signIn(user, *mine.frontEnd, [this] {
                  onThread_->frontEnd->tellProgress();
                  if (apartment_.depth() < 16) apartment_.runPending();
              });
              firstPage_ = mine.frontEnd->endSignIn();
              mine.desk = std::make_unique<Desk>(mine.signedIn->app(), *mine.frontEnd);
          },
          [this] {
              onThread_->desk.reset();
              onThread_->signedIn.reset();
              onThread_->frontEnd.reset();
          })
{
    views_.onChange = [this] { apartment_.wake(); };
    apartment_.waitUntilBegun();
}

BrowserSession::~BrowserSession() { end(); }

std::shared_ptr<View> BrowserSession::visit(const std::string& view)
{
    lastUsed_ = std::chrono::steady_clock::now();
    return view.empty() ? nullptr : views_.visit(view);
}

std::optional<std::string> BrowserSession::answer(const std::string& kind, const json& body,
                                                  const std::string& view)
{
    const auto visited = visit(view);
    std::string answer;
    const bool ran = apartment_.run([&] { answer = onThread_->desk->answer(kind, body, visited); });
    lastUsed_ = std::chrono::steady_clock::now();
    return ran ? std::optional(std::move(answer)) : std::nullopt;
}

std::optional<std::string> BrowserSession::description()
{
    lastUsed_ = std::chrono::steady_clock::now();
    std::string answer;
    const bool ran = apartment_.run([&] {
        auto& signedIn = *onThread_->signedIn;
        const auto user = getObject(getObject(signedIn.app(), "Security"), "CurrentUser");
        const qmevents::Date season = signedIn.fiscalYearStart();
        answer =
            json{{"user", {{"id", toInt32(get(user, "Id"))}, {"name", toText(get(user, "Name"))}}},
                 {"token", token_},
                 {"locale", localeData(Locale::current())},
                 {"rights", signedIn.rights()},
                 {"today", dayText(qmevents::Clock::today())},
                 {"season", {{"from", dayText(season)}, {"until", dayText(season.plusMonths(12))}}}}
                .dump(-1, ' ', false, json::error_handler_t::replace);
    });
    return ran ? std::optional(std::move(answer)) : std::nullopt;
}

std::optional<bool> BrowserSession::mayOpen(const std::string& path)
{
    lastUsed_ = std::chrono::steady_clock::now();
    bool answer = false;
    const bool ran = apartment_.run([&] { answer = onThread_->signedIn->mayOpen(path); });
    return ran ? std::optional(answer) : std::nullopt;
}

void BrowserSession::leave(const std::string& view)
{
    views_.leave(view);
    apartment_.post([this, view] { onThread_->desk->releaseView(view); });
}

void BrowserSession::end()
{
    views_.end();
    apartment_.stop();
}

void BrowserSession::forgetAbsentViews()
{
    for (const auto& view : views_.forgetAbsent(longAbsence)) leave(view);
}

std::chrono::steady_clock::duration BrowserSession::idleTime() const
{
    return std::chrono::steady_clock::now() - lastUsed_.load();
}

} // namespace refhost
