// The courses that the scripted dialogues take. Their logs and results are what the notifiers
// really gave: replaying the dialogues shows that. What is told of each stands in
// tests/unit/golden/courses_*.txt: the phases, then the verdict behind its exit code, then what to
// do.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "beeper/beeper_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "system/result.h"
#include "tests/unit/dialogue/dialogue.h"
#include "tests/unit/dialogue/replay.h"
#include "tests/unit/host/course/told_course.h"
#include "tests/unit/made_file.h"
#include "voice/voice_description.h"

namespace brantel::host {
namespace {

// The mail dialogues' results are those of a session; what Send makes of them.
constexpr std::int32_t kRefusedRecipient = static_cast<std::int32_t>(0x80140001);

std::int32_t ResultOf(const std::string& word) {
  if (word == "S_OK" || word == "0") return kOk;
  if (word == "550") return kRefusedRecipient;
  if (word.starts_with("0x")) return static_cast<std::int32_t>(std::stoul(word, nullptr, 16));
  return kFail;
}

void Set(const InstanceLayout& layout, Instance& instance, const std::string& name,
         const std::string& value) {
  const auto field = std::ranges::find(layout.fields, name, &InstanceField::name);
  if (field == layout.fields.end()) return;
  const auto index = static_cast<std::size_t>(field - layout.fields.begin());
  if (field->kind == FieldKind::kInteger) {
    instance.set_integer(index, std::stoi(value));
  } else {
    instance.set_text(index, value);
  }
}

// The log is one stream, which may be cut anywhere.
std::vector<std::string> InBytes(const std::vector<std::string>& log) {
  std::vector<std::string> bytes;
  for (const std::string& text : log) {
    for (const char byte : text) {
      bytes.emplace_back(1, byte);
    }
  }
  return bytes;
}

// One dialogue, which may hold several alerts.
class DialogueCourses {
 public:
  DialogueCourses(const ClassDescription& notifier_class, const std::filesystem::path& file)
      : layout_(notifier_class.instances),
        dialogue_(DialogueRoot(), file),
        instance_(layout_.fields.size()) {
    Set(layout_, instance_, "gateway", "192.0.2.25");
    Set(layout_, instance_, "to", "ann@example.org");
    Set(layout_, instance_, "from", "ops@example.org");
  }

  std::string Tell() {
    std::string text;
    while (!dialogue_.AtEnd()) {
      const Words& line = dialogue_.TakeLine();
      if (line[0] == "log") log_.push_back(InUtf8(line.at(1)));
      if (line[0] == "no-instance") has_instance_ = false;
      if (line[0] == "field") Set(layout_, instance_, line.at(1), line.at(2));
      if (line.size() == 2 && line[0] != "log") Set(layout_, instance_, line[0], line[1]);
      if (line[0] == "run") Begin(line);
      if (line[0] == "result" && is_send_) text += Told(ResultOf(line.at(1)));
    }
    return text;
  }

 private:
  void Begin(const Words& line) {
    log_.clear();
    is_send_ = line.size() == 1 || line[1].ends_with("Send");
  }

  std::string Told(std::int32_t result) {
    const auto instance = has_instance_ ? std::optional(instance_) : std::nullopt;
    const auto tell = [&](const std::vector<std::string>& log) {
      return TextOf(host::Tell({layout_.class_name, instance}, log, AttemptEnd::kReturned, result));
    };
    EXPECT_EQ(tell(InBytes(log_)), tell(log_)) << dialogue_.Place();
    return tell(log_);
  }

  const InstanceLayout& layout_;
  Dialogue dialogue_;
  Instance instance_;
  bool has_instance_ = true;
  std::vector<std::string> log_;
  bool is_send_ = false;
};

struct DialogueFolder {
  const char* folder;
  const ClassDescription& notifier_class;
};

class DialogueCoursesTest : public ::testing::TestWithParam<DialogueFolder> {};

TEST_P(DialogueCoursesTest, AreToldAsTheyAreWritten) {
  std::vector<std::pair<std::string, std::string>> told;  // what is told, and of which dialogues
  for (const std::filesystem::path& file : DialogueFiles({GetParam().folder})) {
    const std::string text = DialogueCourses(GetParam().notifier_class, file).Tell();
    auto same = std::ranges::find(told, text, &std::pair<std::string, std::string>::first);
    if (same == told.end()) same = told.insert(same, {text, ""});
    same->second += "# " + DialogueName(file) + "\n";
  }
  std::string text;
  for (const auto& [words, dialogues] : told) {
    text += dialogues + words + "\n";
  }
  ExpectMadeFile("tests/unit/golden/courses_" + std::string(GetParam().folder) + ".txt", text);
}

INSTANTIATE_TEST_SUITE_P(Folders, DialogueCoursesTest,
                         ::testing::Values(DialogueFolder{"beeper", kBeeper},
                                           DialogueFolder{"pager", kPager},
                                           DialogueFolder{"smtp_mail", kSMTPMail},
                                           DialogueFolder{"voice", kVoice}),
                         [](const auto& tested) { return std::string(tested.param.folder); });

}  // namespace
}  // namespace brantel::host
