// module_bench MODULE RELAY: measures the module as it was released, through its exports and
// interfaces alone, beside bare floors in the same process that make the same calls of the system.
// RELAY is the address of a mail relay. What was measured goes to standard output in the form that
// Google Benchmark gives it; all times are times that pass.
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/module/bare_calls.h"
#include "bench/module/loaded_notifier.h"
#include "bench/module/replying_modem.h"
#include "bench/module/stopwatch.h"
#include "bench/sample_beeper.h"
#include "bench/sample_mail.h"
#include "bench/sample_page.h"
#include "smtp_mail/smtp_mail_description.h"

namespace brantel {
namespace {

using Task = std::function<void()>;

// The same done by the module and by its bare floor, each measured in nanoseconds.
struct Pair {
  std::string title;
  std::function<double()> by_module;
  std::function<double()> bare;
};

std::function<double()> TimeOfTask(const Task& task) {
  return [=] { return TimeOf(task); };
}

// A class's settings in the registry.
struct Settings {
  std::string key;
  std::vector<bare::Setting> values;
};

// What a class sends by modem, and what that and the far end reply.
struct ModemAlert {
  std::string title;
  const ClassDescription& description;
  std::string instance;  // its file
  Settings settings;
  std::vector<ModemReply> replies;
};

// The full path of a new instance file in the current folder.
std::string Store(const std::string& name, const std::string& content) {
  std::array<char, MAX_PATH> folder{};
  GetCurrentDirectoryA(MAX_PATH, folder.data());
  std::string path = std::string(folder.data()) + "\\" + name;
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

Bstr Wide(const std::string& path) {
  return Bstr(std::wstring(path.begin(), path.end()));
}

Task Sending(HMODULE module, const ClassDescription& description, const std::string& path) {
  const auto notifier = std::make_shared<LoadedNotifier>(module, description);
  const auto instance = std::make_shared<Bstr>(Wide(path));
  return [=] { notifier->Send(*instance); };
}

std::string SettingsKey(const std::string& name) {
  return R"(SOFTWARE\Brantel\Vantrel\notification\)" + name;
}

Task Reading(const std::string& instance, const Settings& settings) {
  return [=] {
    bare::ReadFileOnce(instance);
    bare::ReadSettings(settings.key, settings.values);
  };
}

Pair Mail(HMODULE module, const std::string& relay) {
  Instance mail(smtp_mail_field::kFieldCount);
  mail.set_text(smtp_mail_field::kGateway, relay);
  mail.set_text(smtp_mail_field::kTo, std::string(sample_mail::kTo));
  mail.set_text(smtp_mail_field::kFrom, std::string(sample_mail::kFrom));
  mail.set_text(smtp_mail_field::kSubject, std::string(sample_mail::kSubject));
  mail.set_text(smtp_mail_field::kMessage, std::string(sample_mail::kBody));
  const std::string path = Store("mail", EncodeInstance(kSMTPMail.instances, mail));
  const Settings settings = {SettingsKey("SMTPMail"), {{"Settings_Timeout", "10000"}}};
  bare::StoreSettings(settings.key, settings.values);
  return {"A mail session", TimeOfTask(Sending(module, kSMTPMail, path)),
          TimeOfTask([read = Reading(path, settings), relay] {
            read();
            sample_mail::SendBare(bare::MailClient(relay));
          })};
}

Pair EditPage(HMODULE module) {
  const std::string path = Store("beeper", sample_beeper::File());
  const auto notifier = std::make_shared<LoadedNotifier>(module, kBeeper);
  const auto instance = std::make_shared<Bstr>(Wide(path));
  const std::wstring page(notifier->MakeEditPage(*instance).view());
  return {"An edit page of a stored instance",
          TimeOfTask([=] { notifier->MakeEditPage(*instance); }), TimeOfTask([=] {
            bare::ReadFileOnce(path);
            const Bstr copy(page);
          })};
}

// Without a modem: its replies come at once and without a call of the system, so that nothing of it
// is in either time.
Pair ByModem(HMODULE module, const ModemAlert& alert) {
  const std::string path = Store(alert.title, alert.instance);
  bare::StoreSettings(alert.settings.key, alert.settings.values);
  const Task send = Sending(module, alert.description, path);
  return {alert.title,
          [=, replies = alert.replies] {
            const ReplyingModem modem(module, replies);
            return TimeOf(send);
          },
          TimeOfTask(Reading(path, alert.settings))};
}

ModemAlert Page(const sample_page::Protocol& protocol) {
  return {"A page by " + protocol.name,
          kPager,
          sample_page::File(protocol),
          {SettingsKey("Pager"),
           {{"Settings_COMPort", "COM1"},
            {"Settings_Baud", "1200"},
            {"Settings_ModemString", "ATE0Q0V1X4"},
            {"Settings_8N1", "0"}}},
          protocol.replies};
}

ModemAlert Beep() {
  Instance beep(beeper_field::kFieldCount);
  beep.set_text(beeper_field::kBeeperNumber, "5550100");
  beep.set_text(beeper_field::kDownCode, "1002");
  beep.set_text(beeper_field::kReportMessage, "17");
  return {"A beep",
          kBeeper,
          EncodeInstance(kBeeper.instances, beep),
          {SettingsKey("Beeper"),
           {{"Settings_COMPort", "COM1"},
            {"Settings_Baud", "1200"},
            {"Settings_DialString", "ATDT%s,,,,%s#"},
            {"Settings_ModemString", "ATE0Q0V1X4"},
            {"Settings_Timeout", "5"}}},
          {{"AT", "\r\nOK\r\n"}}};
}

std::vector<Pair> Pairs(HMODULE module, const std::string& relay) {
  std::vector<Pair> pairs = {Mail(module, relay), EditPage(module)};
  for (const sample_page::Protocol& protocol : sample_page::Protocols())
    pairs.push_back(ByModem(module, Page(protocol)));
  pairs.push_back(ByModem(module, Beep()));
  return pairs;
}

struct Row {
  std::string name;
  std::function<double()> measure;
  double nanoseconds = 0;
};

std::vector<Row> Rows(const std::vector<Pair>& pairs) {
  std::vector<Row> rows;
  for (const Pair& pair : pairs) {
    rows.push_back({pair.title + "/the module", pair.by_module});
    rows.push_back({pair.title + "/its bare floor", pair.bare});
  }
  return rows;
}

void MeasureInAnyOrder(std::vector<Row>& rows) {
  std::vector<Row*> order;
  order.reserve(rows.size());
  for (Row& row : rows)
    order.push_back(&row);
  std::ranges::shuffle(order, std::mt19937(GetTickCount()));
  for (Row* row : order)
    row->nanoseconds = row->measure();
}

void Print(const std::vector<Row>& rows) {
  const char* separator = "{\"benchmarks\": [";
  for (const Row& row : rows) {
    std::printf("%s\n{\"name\": \"%s/real_time\", \"real_time\": %.1f, \"time_unit\": \"ns\"}",
                separator, row.name.c_str(), row.nanoseconds);
    separator = ",";
  }
  std::puts("]}");
}

void Measure(const char* module_file, const std::string& relay) {
  HMODULE const module = LoadLibraryA(module_file);
  if (module == nullptr) throw std::runtime_error("the module cannot be loaded");
  std::vector<Row> rows = Rows(Pairs(module, relay));
  MeasureInAnyOrder(rows);
  Print(rows);
}

}  // namespace
}  // namespace brantel

int main(int argument_count, char** arguments) {
  if (argument_count != 3) {
    std::cerr << "usage: module_bench MODULE RELAY\n";
    return 2;
  }
  try {
    brantel::Measure(arguments[1], arguments[2]);
  } catch (const std::exception& reason) {
    std::cerr << "module_bench: " << reason.what() << '\n';
    return 1;
  }
  return 0;
}
