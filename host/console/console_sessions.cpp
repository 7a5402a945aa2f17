#include "host/console/console_sessions.h"

#include <algorithm>
#include <cstddef>

namespace brantel::host {
namespace {

constexpr double kSessionSeconds = 12 * 3600;  // without a request
constexpr std::size_t kMostSessions = 64;
constexpr double kFailureSeconds = 60;
constexpr std::ptrdiff_t kMostFailuresOfPeer = 5;
constexpr std::size_t kMostFailures = 10;

}  // namespace

bool IsSameSecret(std::string_view one, std::string_view other) {
  unsigned difference = one.size() == other.size() ? 0 : 1;
  for (std::size_t i = 0; i < one.size(); ++i) {
    const char counterpart = i < other.size() ? other[i] : '\0';
    difference |= static_cast<unsigned>(one[i] ^ counterpart) & 0xFFU;
  }
  return difference == 0 && !one.empty();
}

ConsoleSessions::ConsoleSessions(ConsoleSystem& system, PasswordCheck check)
    : system_(system), check_(std::move(check)) {
  if (!asks_for_password()) Begin("");
}

const ConsoleSession* ConsoleSessions::Find(std::string_view id) {
  DropOld();
  const auto found = sessions_.find(asks_for_password() ? id : "");
  if (found == sessions_.end()) return nullptr;
  found->second.last_used = system_.Now();
  return &found->second;
}

const ConsoleSession* ConsoleSessions::FindFrame(std::string_view frame_token) {
  DropOld();
  for (auto& [id, session] : sessions_) {
    if (!IsSameSecret(session.frame_token, frame_token)) continue;
    session.last_used = system_.Now();
    return &session;
  }
  return nullptr;
}

ConsoleSessions::LogIn ConsoleSessions::TryLogIn(const std::string& peer,
                                                 std::string_view password) {
  if (!asks_for_password()) return {LogInResult::kWrong};
  if (!MayTry(peer)) return {LogInResult::kTooOften};
  if (!check_(password)) {
    failures_.push_back({system_.Now(), peer});
    return {LogInResult::kWrong};
  }
  DropOld();
  if (sessions_.size() == kMostSessions) {
    sessions_.erase(std::ranges::min_element(
        sessions_, {}, [](const auto& entry) { return entry.second.last_used; }));
  }
  return {LogInResult::kDone, &Begin(system_.RandomText())};
}

void ConsoleSessions::LogOut(std::string_view id) {
  if (!asks_for_password()) return;
  const auto found = sessions_.find(id);
  if (found != sessions_.end()) sessions_.erase(found);
}

const ConsoleSession& ConsoleSessions::Begin(std::string id) {
  ConsoleSession session{id, system_.RandomText(), system_.RandomText(), system_.Now()};
  return sessions_.insert_or_assign(std::move(id), std::move(session)).first->second;
}

void ConsoleSessions::DropOld() {
  if (!asks_for_password()) return;
  const double now = system_.Now();
  std::erase_if(sessions_,
                [&](const auto& entry) { return now - entry.second.last_used > kSessionSeconds; });
}

bool ConsoleSessions::MayTry(const std::string& peer) {
  const double now = system_.Now();
  while (!failures_.empty() && now - failures_.front().when > kFailureSeconds)
    failures_.pop_front();
  return failures_.size() < kMostFailures &&
         std::ranges::count(failures_, peer, &Failure::peer) < kMostFailuresOfPeer;
}

}  // namespace brantel::host
