#include "sim/telephone_book.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "sim/digits.h"
#include "sim/echoing_computer.h"
#include "sim/failing_computer.h"
#include "sim/ntt_centre.h"
#include "sim/numeric_pager.h"
#include "sim/tap_centre.h"
#include "sim/ucp_centre.h"

namespace brantel::sim {
namespace {

template <typename Kind>
std::unique_ptr<FarEnd> Make(const Surroundings& system) {
  return std::make_unique<Kind>(system);
}

// A paging centre, whose modem answers after a second.
template <typename Centre, typename Habits>
Subscriber CentreWith(std::string_view number, std::string_view description, Habits habits,
                      unsigned busy_calls) {
  return {number,
          description,
          CallOutcome::kModem,
          Time(1000),
          busy_calls,
          [habits = std::move(habits)](const Surroundings& system) {
            return std::make_unique<Centre>(system, habits);
          }};
}

Subscriber Tap(std::string_view number, std::string_view description, const TapHabits& habits,
               unsigned busy_calls = 0) {
  return CentreWith<TapCentre>(number, description, habits, busy_calls);
}

Subscriber Ucp(std::string_view number, std::string_view description, const UcpHabits& habits,
               unsigned busy_calls = 0) {
  return CentreWith<UcpCentre>(number, description, habits, busy_calls);
}

Subscriber Ntt(std::string_view number, std::string_view description, const NttHabits& habits,
               unsigned busy_calls = 0) {
  return CentreWith<NttCentre>(number, description, habits, busy_calls);
}

const std::array kSubscribers = {
    Subscriber{"5550100", "a numeric pager, answers after 1.5 s", CallOutcome::kVoice, Time(1500),
               0, Make<NumericPager>},
    Subscriber{"5550101", "busy", CallOutcome::kBusy, Time(1000)},
    Subscriber{"5550102", "somebody without a modem: NO CARRIER after 3 s", CallOutcome::kNoCarrier,
               Time(3000)},
    Subscriber{"5550103", "the line is dead: NO DIALTONE", CallOutcome::kNoDialtone, Time(500)},
    Subscriber{"5550104", "rings for 6 s: NO ANSWER", CallOutcome::kNoAnswer, Time(6000)},
    Subscriber{"5550105", "the modem never says anything", CallOutcome::kSilence, Time(0)},
    Subscriber{"5550106", "a computer that echoes, answers after 40 s", CallOutcome::kModem,
               Time(40000), 0, Make<EchoingComputer>},
    Subscriber{"5550107", "garbage instead of a result, 120 bytes without an end",
               CallOutcome::kGarbage, Time(1000)},
    Subscriber{"5550108", "busy twice, then a computer that echoes", CallOutcome::kModem,
               Time(1000), 2, Make<EchoingComputer>},
    Subscriber{"5550109", "a computer that echoes", CallOutcome::kModem, Time(1000), 0,
               Make<EchoingComputer>},
    Subscriber{"5550110", "a computer that loses the carrier after 3 s", CallOutcome::kModem,
               Time(1000), 0, Make<FailingComputer>},
    Subscriber{"5550111", "somebody unplugs the modem: the port vanishes", CallOutcome::kUnplugged,
               Time(1000)},
    Subscriber{"5550112", "a numeric pager, answers after 7 s", CallOutcome::kVoice, Time(7000), 0,
               Make<NumericPager>},
    Tap("5550200", "a TAP centre", {}),
    Tap("5550201", "TAP, with password secret", {.password = "secret"}),
    Tap("5550202", "TAP, ID= after 8 s", {.prompt_delay = Time(7700)}),
    Tap("5550203", "TAP, never says ID=", {.prompt = ""}),
    Tap("5550204", "TAP, wants the log-in twice", {.log_ins = 2}),
    Tap("5550205", "TAP, [p 15 s after the log-in", {.go_ahead_delay = Time(14700)}),
    Tap("5550206", "TAP, never says [p", {.goes_ahead = false}),
    Tap("5550207", "TAP, NAK to the first block", {.naks = 1}),
    Tap("5550208", "TAP, NAK to the first two blocks", {.naks = 2}),
    Tap("5550209", "TAP, NAK to every block", {.naks = TapHabits::kAlways}),
    Tap("5550210", "TAP, RS to every block", {.answer = tap::kRs}),
    Tap("5550211", "TAP, ESC EOT to every block", {.answer = tap::kEot}),
    Tap("5550212", "TAP, nothing to any block", {.answer = '\0'}),
    Tap("5550213", "TAP, loses the carrier instead of ID=", {.loss = CarrierLoss::kAtPrompt}),
    Tap("5550214", "TAP, loses the carrier instead of [p", {.loss = CarrierLoss::kAtGoAhead}),
    Tap("5550215", "TAP, loses the carrier behind [p", {.loss = CarrierLoss::kAtPage}),
    Tap("5550216", "TAP, loses the carrier instead of answering a block",
        {.loss = CarrierLoss::kAtReply}),
    Tap("5550217", "TAP, says Slow instead of ID=", {.prompt = "Slow\r"}),
    Tap("5550218", "TAP, takes 3 s for each answer", {.pace = Time(3000)}),
    Tap("5550219", "TAP, takes 8 s for each answer", {.pace = Time(8000)}),
    Tap("5550220", "TAP, takes 30 s for each answer", {.pace = Time(30000)}),
    Tap("5550221", "busy once, then TAP", {}, 1),
    Tap("5550222", "TAP, Slow ID= after 12 s", {.prompt = "Slow ID=", .prompt_delay = Time(11700)}),
    Ucp("55503nn", "UCP, refuses all messages with error nn",
        {.reply = UcpHabits::Reply::kErrorOfNumber}),
    Ucp("5550400", "a UCP centre", {}),
    Ucp("5550401", "UCP, never answers", {.reply = UcpHabits::Reply::kNothing}),
    Ucp("5550402", "UCP, answers with an empty frame", {.reply = UcpHabits::Reply::kEmptyFrame}),
    Ucp("5550403", "UCP, answers with garbage", {.reply = UcpHabits::Reply::kGarbage}),
    Ucp("5550404", "UCP, loses the carrier instead of answering", {.loss = CarrierLoss::kAtReply}),
    Ucp("5550405", "UCP, takes 30 s for each answer", {.pace = Time(30000)}),
    Ucp("5550406", "busy once, then UCP", {}, 1),
    Ntt("55505nn", "NTT, answers each page with nn: 28 is accepted",
        {.reply = NttHabits::Reply::kDigitsOfNumber}),
    Ntt("5550600", "NTT, never says READY", {.prompt = ""}),
    Ntt("5550601", "NTT, READY after 8 s", {.prompt_delay = Time(7700)}),
    Ntt("5550602", "NTT, 10 instead of READY, after 20 s",
        {.prompt = "10", .prompt_delay = Time(19700)}),
    Ntt("5550603", "NTT, 17 instead of READY", {.prompt = "17"}),
    Ntt("5550604", "NTT, 20 instead of READY, ten times", {.prompt = "20", .prompts = 10}),
    Ntt("5550605", "NTT, loses the carrier instead of READY", {.loss = CarrierLoss::kAtPrompt}),
    Ntt("5550606", "NTT, loses the carrier instead of answering a page",
        {.loss = CarrierLoss::kAtReply}),
    Ntt("5550607", "NTT, nothing to any page", {.reply = NttHabits::Reply::kNothing}),
    Ntt("5550608", "NTT, takes 8 s for each answer", {.pace = Time(8000)}),
    Ntt("5550609", "busy once, then NTT", {}, 1),
    Ntt("5550610", "NTT, hangs up 2 s behind its answer to a page", {.takes_one_page = true}),
};

const Subscriber kNotInService = {"", "not in service: NO CARRIER after 3 s",
                                  CallOutcome::kNoCarrier, Time(3000)};

bool MatchesDigit(char pattern, char digit) {
  return pattern == digit || (pattern == 'n' && IsDigit(digit));
}

}  // namespace

std::span<const Subscriber> TelephoneBook() {
  return kSubscribers;
}

const Subscriber& FindSubscriber(std::string_view number) {
  const auto* const found = std::ranges::find_if(kSubscribers, [&](const Subscriber& subscriber) {
    return std::ranges::equal(subscriber.number, number, MatchesDigit);
  });
  return found == kSubscribers.end() ? kNotInService : *found;
}

}  // namespace brantel::sim
