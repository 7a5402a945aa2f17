#include "web/web_page.h"

#include <string>

#include "instance/text_choice.h"
#include "text/string_table.h"

namespace brantel {
namespace {

// Before the title.
constexpr std::string_view kHead =
    R"(<HTML><HEAD><TITLE>Vantrel</TITLE></HEAD><BODY bgcolor="#ffffff"><FONT COLOR="#000000">)"
    R"(<TABLE BORDER=2 CELLPADDING=3 CELLSPACING=0 BGCOLOR="#c0c0c0"><TR>)"
    R"(<TH COLSPAN=2 ALIGN=left BGCOLOR="#0080c0"><table width="100%" border=0><tr><td>)";

// The add page, between the title, the class name, the size of the name's input, and the rows.
constexpr std::string_view kAddTitleEnd =
    R"(</td><td align=right><A href="h_edtnot.htm" target=_NEW>Help</A></td></tr></table></TH>)"
    R"(</TR><TR><TD WIDTH="98%" VALIGN=top>)"
    R"(<TABLE WIDTH="100%" BORDER=0 CELLPADDING=0 CELLSPACING=2 BGCOLOR="#c0c0c0">)"
    R"(<FORM method="post" ACTION="_maincfgret.cgi"> )"
    R"(<input type="hidden" name="page" value="notify"><input type="hidden" name="origname" >)"
    R"(<input type="hidden" name="action" value="return"> <input type=hidden name=type value=")";
constexpr std::string_view kAddClassEnd = R"("><tr><td>Instance Name:</td><td><input size=)";
constexpr std::string_view kAddNameEnd = " maxlength=512\tname=instancename ></td></tr>";
constexpr std::string_view kAddRowsEnd =
    R"(<TR><TD></TD><TD></TD></TR></TABLE></TD></TR><tr><td ALIGN=right>)"
    R"(<input type=hidden name=end value=end><input type=submit value="Submit"></td></tr>)"
    R"(</FORM></TABLE>)";

// The edit page, between the title, the instance's name, the class name, the name again, and the
// rows.
constexpr std::string_view kEditTitleEnd =
    R"(</td><td align=right><a href="h_edtnot.htm" target="_NEW">Help</a></td></tr></table></TH>)"
    R"(</TR><TR><TD WIDTH="98%" VALIGN=TOP>)"
    R"(<TABLE WIDTH="100%" BORDER=0 CELLPADDING=0 CELLSPACING=2 BGCOLOR="#C0C0C0">)"
    R"(<FORM method="POST" ACTION="_maincfgret.cgi"> )"
    R"(<input type="hidden" name="page" value="notify">)"
    R"(<input type="hidden" name="origname" value=")";
constexpr std::string_view kEditOriginalNameEnd =
    R"("><input type="hidden" name="action" value="return">)"
    "\r\n"
    R"(<input type=hidden name=type value=")";
constexpr std::string_view kEditClassEnd =
    "\">\r\n"
    R"(<tr><td>Instance Name:</td><td>)"
    R"(<input type=TEXT DISABLED size=40 maxlength=512 name=instancename value=")";
constexpr std::string_view kEditNameEnd = "\"></td></tr>\r\n";
constexpr std::string_view kEditRowsEnd =
    R"(</table></td></tr><tr><td ALIGN=RIGHT>)"
    R"(<input type=hidden name=end value=end><input type=SUBMIT value="Submit"></td></tr>)"
    "</form></table>\r\n";

// Both pages again: the ways out, and who made the page.
constexpr std::string_view kNavigationAndFooter =
    R"(<table border=0><tr><td><form method="GET" action="/_maincfgreg.cgi">)"
    R"(<input type=submit name=action value="Notifications"></form></td>)"
    "\r\n"
    R"(<td><form method="GET" action="/_top.cgi">)"
    R"(<input type=submit name=action value="Top view"></form></td>)"
    "\r\n"
    "</tr></table><hr></BODY>\r\n"
    R"(<i>By the authors of <a href="/">Vantrel</a></i><br>Made by Brantel<br>)"
    "<b>2000/10/02 15:27</b>\r\n"
    "</HTML>";

// What one page does differently in the rows.
struct RowStyle {
  RowText FormRow::*text;
  void (HtmlText::*append_value)(std::string_view value);
};
constexpr RowStyle kAddRows = {&FormRow::add_row, &HtmlText::Append};
constexpr RowStyle kEditRows = {&FormRow::edit_row, &HtmlText::AppendEscaped};

void AppendRadioButtons(HtmlText& page, const FormRow& row, std::string_view value) {
  const std::size_t chosen = ChosenPosition(row.choices, value);
  for (unsigned i = 0; i < row.choices.count; ++i) {
    const std::string text = LoadText(row.choices.first_id + i);
    page.Append(i == 0 ? "" : " ");
    page.Append("<input type=RADIO name=");
    page.Append(row.name);
    page.Append(" value=\"");
    page.Append(text);
    page.Append(i == chosen ? "\" checked>" : "\">");
    page.Append(text);
  }
}

void AppendRow(HtmlText& page, const FormRow& row, std::string_view value, RowStyle style) {
  page.Append((row.*style.text).before());
  if (row.input == FormInput::kChoice) {
    AppendRadioButtons(page, row, value);
  } else {
    (page.*style.append_value)(value);
  }
  page.Append((row.*style.text).after());
}

bool HasRow(const FormRow& row) {
  return row.input != FormInput::kNone && row.input != FormInput::kUnshown;
}

void AppendRows(HtmlText& page, const InstanceLayout& layout, const Instance& values,
                RowStyle style) {
  for (const std::size_t i : layout.fields.form_order()) {
    const FormRow& row = layout.fields[i].form;
    if (HasRow(row)) AppendRow(page, row, values.text(i), style);
  }
}

void AppendEnd(HtmlText& page, std::string_view rows_end) {
  page.Append(rows_end);
  page.Append(kNavigationAndFooter);
}

// Of a page whose values are not full of markup.
std::size_t ExpectedSize(const InstanceLayout& layout, const Instance& values) {
  constexpr std::size_t kFrame = 8192;
  constexpr std::size_t kRow = 256;
  std::size_t size = kFrame + kRow * layout.fields.size();
  for (std::size_t i = 0; i < layout.fields.size(); ++i)
    size += values.text(i).size();
  return size;
}

}  // namespace

HtmlText BuildAddPage(const ClassDescription& description, const Instance& values) {
  HtmlText page(ExpectedSize(description.instances, values));
  page.Append(kHead);
  page.Append(LoadText(description.web_form->add_title_id));
  page.Append(kAddTitleEnd);
  page.Append(description.instances.class_name);
  page.Append(kAddClassEnd);
  page.Append(description.web_form->add_name_size);
  page.Append(kAddNameEnd);
  AppendRows(page, description.instances, values, kAddRows);
  AppendEnd(page, kAddRowsEnd);
  return page;
}

HtmlText BuildEditPage(const ClassDescription& description, std::string_view name,
                       const Instance& values) {
  HtmlText page(ExpectedSize(description.instances, values));
  page.Append(kHead);
  page.Append(LoadText(description.web_form->edit_title_id));
  page.Append(kEditTitleEnd);
  page.AppendEscaped(name);
  page.Append(kEditOriginalNameEnd);
  page.Append(description.instances.class_name);
  page.Append(kEditClassEnd);
  page.AppendEscaped(name);
  page.Append(kEditNameEnd);
  AppendRows(page, description.instances, values, kEditRows);
  AppendEnd(page, kEditRowsEnd);
  return page;
}

}  // namespace brantel
