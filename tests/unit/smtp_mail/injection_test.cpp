// Hostile text in every place that it can come from: it adds no command to the dialogue and no
// header to the message. What it can do is to take a header's own line end away.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "instance/instance_codec.h"
#include "smtp_mail/smtp_mail.h"
#include "smtp_mail/smtp_mail_description.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/smtp_mail/message/fake_mail_environment.h"
#include "tests/unit/smtp_mail/network/fake_relay.h"
#include "tests/unit/system/fake_machine_name.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using namespace std::string_view_literals;

enum class Source { kGateway, kTo, kFrom, kSubject, kMessage, kHostName, kTimeZone };

// Where hostile text can come from, and what stands there otherwise.
struct Place {
  Source source;
  std::string_view name;
  std::string_view text;
};

constexpr Place kPlaces[] = {
    {Source::kGateway, "Gateway", "192.0.2.25"},
    {Source::kTo, "To", "ann@example.org"},
    {Source::kFrom, "From", "ops@%s"},
    {Source::kSubject, "Subject", "Disk full"},
    {Source::kMessage, "Message", "Note: it is.\r\n"},
    {Source::kHostName, "HostName", "watch"},
    {Source::kTimeZone, "TimeZone", "UTC"},
};

// What the first line of it ends in begins an escape sequence.
constexpr std::string_view kEndingInEscape = "\xE9\x1B\r\n";

constexpr std::string_view kPayloads[] = {
    "\r"sv,
    "\n"sv,
    "\r\n"sv,
    "\n\r"sv,
    "\r\r\n"sv,
    "\r\n\r\n"sv,
    "\n\n"sv,
    "\0"sv,
    "\0\r\n"sv,
    "\r\0\n"sv,
    "\r\n.\r\n"sv,
    "\n.\n"sv,
    "\r\n.\r\nQUIT\r\n"sv,
    "\r\nDATA\r\n"sv,
    "\nDATA\n"sv,
    "\rDATA\r"sv,
    "\r\nRSET\r\n"sv,
    "\r\nQUIT\r\n"sv,
    "\nQUIT\n"sv,
    "\r\nNOOP\r\n"sv,
    "\r\nVRFY root\r\n"sv,
    "\r\nHELO evil\r\n"sv,
    "\r\nMAIL From:<eve@example.org>\r\n"sv,
    "\r\nRCPT To:<eve@example.org>\r\n"sv,
    "\nRCPT To:<eve@example.org>\n"sv,
    "\rRCPT To:<eve@example.org>\r"sv,
    ">\r\nRCPT To:<eve@example.org"sv,
    "\0\r\nRCPT To:<eve@example.org>\r\n"sv,
    "\r\nBcc: eve@example.org\r\n"sv,
    "\nBcc: eve@example.org\n"sv,
    "\rBcc: eve@example.org\r"sv,
    "\r\nSubject: other\r\n\r\nother body\r\n"sv,
    "\r\nContent-Type: text/html\r\n\r\n<b>"sv,
    "\r\nReply-To: eve@example.org\r\n continued\r\n"sv,
    "\r\n\r\n.\r\nMAIL From:<e>\r\nRCPT To:<e>\r\nDATA\r\n"sv,
    "\xE9\r\nBcc: eve@example.org\r\n"sv,
    "\xE9\nBcc: eve@example.org"sv,
    "\x1B(B\r\nBcc: eve@example.org\r\n"sv,
    kEndingInEscape,
    "%s\r\nBcc: eve@example.org\r\n%s"sv,
    // Pairs that the conversion from EUC-JP makes line ends of.
    "\xFD\xE1\x8A"
    "Bcc: eve@example.org"sv,
    "\xFD \x8D\x8A"
    "Bcc: eve@example.org"sv,
};

// Where in its field a payload stands.
enum class Position { kAlone, kBefore, kBehind, kBehindTooMuch };

constexpr Position kPositions[] = {Position::kAlone, Position::kBefore, Position::kBehind,
                                   Position::kBehindTooMuch};

std::string Compose(std::string_view payload, std::string_view text, Position position) {
  switch (position) {
    case Position::kAlone:
      return std::string(payload);
    case Position::kBefore:
      return std::string(payload).append(text);
    case Position::kBehind:
      return std::string(text).append(payload);
    default:
      // Behind more than an encoded header has room for, with a byte that has to be encoded.
      return std::string(text) + std::string(495, 'x') + "\xE9" + std::string(payload);
  }
}

class InjectionTest : public ::testing::TestWithParam<Place> {
 protected:
  // Delivers a message with this text in the place that the test is about.
  void Deliver(const std::string& text, unsigned code_page) {
    relay_ = {};
    state_.emplace();
    environment_ = {};
    environment_.code_page = code_page;
    machine_name_ = {};
    const auto text_of = [&](Source source) {
      const auto* const place = std::ranges::find(kPlaces, source, &Place::source);
      return GetParam().source == source ? text : std::string(place->text);
    };
    environment_.zone.reset();
    environment_.zone_variable = text_of(Source::kTimeZone);
    machine_name_.host_name = text_of(Source::kHostName);

    Instance instance(5);
    instance.set_text(smtp_mail_field::kGateway, text_of(Source::kGateway));
    instance.set_text(smtp_mail_field::kTo, text_of(Source::kTo));
    FakeInstanceFiles files;
    files.files["alert"] = EncodeInstance(kSMTPMail.instances, instance);
    FakeNotifierHost host;
    host.expansions = {{kOk, text_of(Source::kFrom)},
                       {kOk, text_of(Source::kSubject)},
                       {kOk, text_of(Source::kMessage)}};
    FakeSettingsStore settings;
    SmtpMail notifier(files, settings, sockets_,
                      {.network = relay_,
                       .environment = environment_,
                       .machine_name = machine_name_,
                       .state = *state_});
    notifier.Send({u"alert", "alert"}, &host);
  }

  // A wrong gateway was none at all.
  [[nodiscard]] bool WasNotTried() const {
    return GetParam().source == Source::kGateway && relay_.commands.empty();
  }

  void ExpectNoCommandMore() const {
    std::vector<std::string> words;
    for (const std::string& command : relay_.commands) {
      EXPECT_EQ(command.find_first_of("\r\0"sv), std::string::npos);
      words.push_back(command.substr(0, command.find_first_of(" :")));
    }
    // A message may end early, deliberately, so what comes behind it is up to the message.
    if (GetParam().source == Source::kMessage && words.size() > 4) words.resize(4);
    if (GetParam().source != Source::kMessage && !words.empty()) {
      EXPECT_EQ(words.back(), "QUIT");
      words.pop_back();
    }
    EXPECT_THAT(words, ElementsAre("HELO", "MAIL", "RCPT", "DATA"));
  }

  // The line end of a header is dropped with the end of its text where the header finds no room for
  // that, and taken for a part of an escape sequence where the text ends in an escape; then the
  // header goes on with the next one. Without a label for the code page nothing is encoded.
  [[nodiscard]] static std::vector<std::string> ExpectedHeaderNames(std::string_view payload,
                                                                    Position position,
                                                                    unsigned code_page) {
    std::vector<std::string> names = {"From",         "Date",         "To",
                                      "Mime-Version", "Content-Type", "Subject"};
    const bool is_too_much = position == Position::kBehindTooMuch;
    const bool ends_in_escape = payload == kEndingInEscape;
    if (!is_too_much && (!ends_in_escape || code_page == 437)) return names;
    switch (GetParam().source) {
      case Source::kTimeZone:
        names.erase(names.begin() + 2);
        break;
      case Source::kTo:
        names.erase(names.begin() + 3);
        break;
      case Source::kSubject:
        // An escape takes one of two line ends, so the message comes next, as a header line.
        if (!is_too_much) names.emplace_back("Note");
        break;
      default:
        break;
    }
    return names;
  }

  // Reads the headers as leniently as any reader does: each line end ends a line.
  std::vector<std::string> HeaderNames() const {
    std::vector<std::string> names;
    std::string_view rest = relay_.content;
    while (!rest.empty()) {
      const std::string_view line = rest.substr(0, rest.find_first_of("\r\n\0"sv));
      if (line.empty()) break;
      names.emplace_back(line.substr(0, line.find(':')));
      rest.remove_prefix(line.size());
      if (rest.empty()) break;
      rest.remove_prefix(rest.starts_with("\r\n") ? 2 : 1);
    }
    return names;
  }

  class Sockets final : public SocketsLibrary {
   public:
    bool Start() override { return true; }
    void Stop() noexcept override {}
  };

  Sockets sockets_;
  FakeRelay relay_;
  FakeMailEnvironment environment_;
  FakeMachineName machine_name_;
  std::optional<SmtpState> state_;
};

INSTANTIATE_TEST_SUITE_P(Places, InjectionTest, ::testing::ValuesIn(kPlaces),
                         [](const auto& place) { return std::string(place.param.name); });

TEST_P(InjectionTest, AddsNeitherCommandNorHeader) {
  static_assert(std::size(kPayloads) >= 40);
  for (const unsigned code_page : {1252U, 932U, 437U}) {
    for (const std::string_view payload : kPayloads) {
      for (const Position position : kPositions) {
        const std::string text = Compose(payload, GetParam().text, position);
        SCOPED_TRACE(::testing::PrintToString(text));
        Deliver(text, code_page);
        if (WasNotTried()) continue;
        ExpectNoCommandMore();
        EXPECT_EQ(HeaderNames(), ExpectedHeaderNames(payload, position, code_page));
      }
    }
  }
}

}  // namespace
}  // namespace brantel
