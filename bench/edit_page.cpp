#include "bench/edit_page.h"

#include <array>
#include <cstdlib>

#include "text/string_table.h"
#include "web/web_page.h"

namespace brantel {
namespace {

constexpr std::string_view kName = "Night shift";
constexpr const char* kTemplate = "edit page";
constexpr std::size_t kExpectedSize = 8192;

constexpr FormRow kRow =
    SameRowOnBothPages(FormInput::kSingleLine, "number",
                       "<tr><td>Number of the pager that is called first, with the digits that the "
                       "line outside needs:</td><td><input type=TEXT size=40 maxlength=255 "
                       "name=number value=\"%s\"></td></tr>\r\n");
constexpr std::size_t kRowCount = 8;
constexpr auto kFields = [] {
  FieldTable<kRowCount> table;
  for (std::size_t i = 0; i < kRowCount; ++i) {
    table.rows.at(i) = {.index = i, .name = "number", .form = kRow};
    table.form_order.at(i) = static_cast<std::uint8_t>(i);
  }
  return table;
}();
constexpr ClassDescription kForm = {
    .instances = {.class_name = "Beeper", .fields = kFields},
    .web_form = WebFormDescription{.add_title_id = text_id::kAddBeeper,
                                   .edit_title_id = text_id::kEditBeeper}};

// 255 characters, five of them markup.
std::string Value(std::size_t row) {
  std::string value = "<";
  value += std::to_string(row);
  value +=
      "> %n went down at %t & has not answered since; last seen at \"%l\". See the handbook "
      "for whom to call when nobody has answered a page within a quarter of an hour, and for "
      "what to do when the line itself is down and no page can be sent ";
  value.resize(255, '.');
  return value;
}

std::string Escaped(std::string_view text) {
  HtmlText html(0);
  html.AppendEscaped(text);
  return std::string(html.view());
}

}  // namespace

EditPage::EditPage() : values_(kRowCount) {
  for (std::size_t i = 0; i < kRowCount; ++i)
    values_.set_text(i, Value(i));
  for (const std::string_view value : ValuesInPageOrder()) {
    escaped_values_.push_back(Escaped(value));
    variables_.push_back("VALUE" + std::to_string(variables_.size()));
  }
  CutUpPage();
  MakeTemplate();
  if (CopyBare() != Build().view() || ExpandTemplate() != Build().view()) std::abort();
}

HtmlText EditPage::Build() const {
  return BuildEditPage(kForm, kName, values_);
}

std::string EditPage::CopyBare() const {
  std::string page;
  page.reserve(kExpectedSize);
  page += texts_.front();
  for (std::size_t i = 0; i < escaped_values_.size(); ++i) {
    page += escaped_values_[i];
    page += texts_[i + 1];
  }
  return page;
}

std::string EditPage::ExpandTemplate() const {
  ctemplate::TemplateDictionary dictionary(kTemplate);
  const std::vector<std::string_view> values = ValuesInPageOrder();
  for (std::size_t i = 0; i < values.size(); ++i) {
    dictionary.SetValueWithoutCopy(variables_[i],
                                   ctemplate::TemplateString(values[i].data(), values[i].size()));
  }
  std::string page;
  page.reserve(kExpectedSize);
  templates_.ExpandNoLoad(kTemplate, ctemplate::DO_NOT_STRIP, &dictionary, nullptr, &page);
  return page;
}

// The name stands on the page twice, before the rows.
std::vector<std::string_view> EditPage::ValuesInPageOrder() const {
  std::vector<std::string_view> values = {kName, kName};
  for (std::size_t i = 0; i < kRowCount; ++i)
    values.push_back(values_.text(i));
  return values;
}

void EditPage::CutUpPage() {
  const HtmlText page = Build();
  std::string_view rest = page.view();
  for (const std::string& value : escaped_values_) {
    const std::size_t place = rest.find(value);
    if (place == std::string_view::npos) std::abort();
    texts_.emplace_back(rest.substr(0, place));
    rest.remove_prefix(place + value.size());
  }
  texts_.emplace_back(rest);
}

void EditPage::MakeTemplate() {
  std::string source = texts_.front();
  for (std::size_t i = 0; i < variables_.size(); ++i)
    source += "{{" + variables_[i] + ":h}}" + texts_[i + 1];
  templates_.StringToTemplateCache(kTemplate, source, ctemplate::DO_NOT_STRIP);
  templates_.Freeze();
}

}  // namespace brantel
