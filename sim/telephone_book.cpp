#include "sim/telephone_book.h"

#include <algorithm>
#include <array>

#include "sim/echoing_computer.h"
#include "sim/failing_computer.h"
#include "sim/numeric_pager.h"

namespace brantel::sim {
namespace {

template <typename Kind>
std::unique_ptr<FarEnd> Make(const Surroundings& surroundings) {
  return std::make_unique<Kind>(surroundings);
}

constexpr std::array kSubscribers = {
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
};

constexpr Subscriber kNotInService = {"", "not in service: NO CARRIER after 3 s",
                                      CallOutcome::kNoCarrier, Time(3000)};

}  // namespace

std::span<const Subscriber> TelephoneBook() {
  return kSubscribers;
}

const Subscriber& FindSubscriber(std::string_view number) {
  const auto* const found = std::ranges::find(kSubscribers, number, &Subscriber::number);
  return found == kSubscribers.end() ? kNotInService : *found;
}

}  // namespace brantel::sim
