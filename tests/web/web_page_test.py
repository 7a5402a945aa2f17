"""The pages as Chromium understands them."""

import functools
import urllib.parse

import pytest
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

from conftest import CHARSET, CLASSES, TIME_LIMIT, run_forms, shown

PROTOCOLS = ["TAP", "SMS-TAP", "NTT", "UCP-SMS"]

# Values with which an edit page must stay what it is. A NUL ends a value.
HOSTILE_VALUES = [
    b'"', b"'", b"<", b">", b"&", b'""', b"<>", b"&&", b'">', b"'>",
    b'"><script>document.title="broken"</script>', b"<script>document.title='broken'</script>",
    b"</script><script>1</script>", b'"><img src=x onerror=alert(1)>', b"<b>bold</b>",
    b"</td></tr></table>", b"</form><form action=/elsewhere>", b"</textarea><b>out</b><textarea>",
    b"</TEXTAREA>", b"<!-- comment", b"--><b>", b"<![CDATA[<b>]]>", b"<?php echo 1 ?>", b"</html>",
    b'" onmouseover="alert(1)', b"' onmouseover='alert(1)", b'x" disabled type="hidden', b"` onclick=1",
    b"&lt;b&gt;", b"&quot; onclick=&quot;1", b"&#34;&#x22;&NotAnEntity;", b"&copy &lt &amp",
    b"%s%n%d%22%3E%3Cb%3E", b'\\"', b'before\0"><b>after</b>', b"\0",
    bytes(range(0x80, 0x100)), b"\xE9\xFF\x22\x3E\x80\x3Cb\x3E",
    b'"<>&' * 1250, (b"x" * 4990 + b'"><b a=1>'),
]

# Every element of the page by its tag and the names of its attributes, in order, and every comment.
STRUCTURE = """
const nodes = [];
const walker = document.createTreeWalker(document, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_COMMENT);
while (walker.nextNode()) {
  const node = walker.currentNode;
  nodes.push(node.nodeType === Node.COMMENT_NODE ? "comment"
      : [node.tagName, ...Array.from(node.attributes, a => a.name)].join(" "));
}
return nodes;
"""


def by_class(function):
    return pytest.mark.parametrize("form_class", CLASSES, ids=lambda c: c.name)(function)


def structure(browser) -> list[str]:
    return browser.execute_script(STRUCTURE)


def named(browser, name: str):
    elements = browser.find_elements(By.NAME, name)
    assert len(elements) == 1, name
    return elements[0]


# Of the elements with each of the names their tags and values, those as they stand in the page, before an
# input of one line drops line breaks. Asked for at once: each question to the browser takes its time.
ELEMENTS = """
return arguments[0].map(name => Array.from(document.getElementsByName(name), element =>
    [element.localName, element.localName === "textarea" ? element.value : element.getAttribute("value")]));
"""


def values_in(browser, form_class) -> list[str]:
    """The values of the form's rows, each of which has one element of its tag."""
    found = browser.execute_script(ELEMENTS, [row.name for row in form_class.rows])
    for row, elements in zip(form_class.rows, found):
        assert [tag for tag, _ in elements] == [row.tag], row.name
    return [value for [(_, value)] in found]


def label_of(browser, name: str) -> str:
    row = browser.execute_script("return document.getElementsByName(arguments[0])[0].closest('tr')", name)
    return row.find_elements(By.TAG_NAME, "td")[0].text


def edit_page(form_class, value: bytes, name: str | bytes = "Night", protocol: bytes = b"TAP") -> bytes:
    value = value[:form_class.longest_value]
    instance = form_class.instance({row.name: value for row in form_class.rows}, protocol)
    return run_forms(form_class.name, "edit", name, instance=instance)


def posted_form(browser, server) -> str:
    browser.find_element(By.CSS_SELECTOR, "input[value=Submit]").click()
    WebDriverWait(browser, TIME_LIMIT).until(lambda _: server.posted)
    [(path, body)] = server.posted
    assert path == "/_maincfgret.cgi"
    return body


def fields_of(body: str) -> list[tuple[str, str]]:
    return urllib.parse.parse_qsl(body, keep_blank_values=True, encoding=CHARSET)


@by_class
def test_the_edit_page_shows_what_is_stored(form_class, show):
    values = {row.name: b"value of " + row.name.encode() for row in form_class.rows}
    browser = show(run_forms(form_class.name, "edit", "Night shift",
                             instance=form_class.instance(values, b"NTT")))
    assert values_in(browser, form_class) == [shown(values[row.name]) for row in form_class.rows]
    for row in form_class.rows:
        assert label_of(browser, row.name) == row.label
    name = named(browser, "instancename")
    assert label_of(browser, "instancename") == "Instance Name:"
    assert name.get_property("value") == "Night shift"
    assert not name.is_enabled()
    assert named(browser, "origname").get_property("value") == "Night shift"


@by_class
def test_the_add_page_shows_the_values_of_default_and_asks_for_a_name(form_class, show):
    values = {row.name: b"value of " + row.name.encode() for row in form_class.rows}
    browser = show(run_forms(form_class.name, "add", instance=form_class.instance(values, b"NTT")))
    assert values_in(browser, form_class) == [shown(values[row.name]) for row in form_class.rows]
    for row in form_class.rows:
        assert label_of(browser, row.name) == row.label
    name = named(browser, "instancename")
    assert label_of(browser, "instancename") == "Instance Name:"
    assert name.get_property("value") == ""
    assert name.is_enabled()
    assert named(browser, "origname").get_property("value") == ""


@by_class
def test_the_add_page_is_empty_without_a_default(form_class, show):
    browser = show(run_forms(form_class.name, "add"))
    assert values_in(browser, form_class) == [""] * len(form_class.rows)
    assert named(browser, "type").get_property("value") == form_class.name


@pytest.fixture(scope="module")
def harmless_structure(show):
    """The structure of a class's edit page with harmless values, which the browser is asked for once."""
    return functools.cache(lambda form_class: structure(show(edit_page(form_class, b"harmless"))))


def test_hostile_values_are_forty():
    assert len(set(HOSTILE_VALUES)) == 40


@by_class
@pytest.mark.parametrize("value", HOSTILE_VALUES, ids=lambda value: repr(value[:30]))
def test_a_hostile_value_is_shown_as_it_is_and_adds_nothing_to_the_edit_page(
        form_class, value, show, harmless_structure):
    expected = harmless_structure(form_class)
    browser = show(edit_page(form_class, value))
    assert structure(browser) == expected
    assert browser.title == "Vantrel"
    text = shown(value[:form_class.longest_value].split(b"\0")[0])
    assert values_in(browser, form_class) == [text] * len(form_class.rows)


@pytest.mark.parametrize("name", [b"R&D", b"a&lt;b", b"&quot;", b"&copy", b"O'Brien", b"50%", b"\xC4\xE9",
                                  b'"><b>', b"' onclick='1"], ids=repr)
def test_a_hostile_name_is_shown_as_it_is_and_adds_nothing_to_the_edit_page(name, show, harmless_structure):
    form_class = CLASSES[0]
    expected = harmless_structure(form_class)
    browser = show(edit_page(form_class, b"harmless", name))
    assert structure(browser) == expected
    assert named(browser, "origname").get_property("value") == shown(name)
    assert named(browser, "instancename").get_property("value") == shown(name)


def test_the_message_of_a_mail_keeps_its_lines(show):
    mail = next(c for c in CLASSES if c.name == "SMTPMail")
    instance = mail.instance({"message": b"one\r\n\r\n  two\r\n"})
    browser = show(run_forms("SMTPMail", "edit", "Night", instance=instance))
    assert named(browser, "message").get_property("value") == "one\n\n  two\n"


@pytest.mark.parametrize("page", ["add", "edit"])
@pytest.mark.parametrize("stored, checked", [*((p, p) for p in PROTOCOLS), ("", "TAP"), ("tap", "TAP")])
def test_the_protocol_is_chosen_by_radio_buttons(page, stored, checked, show):
    pager = next(c for c in CLASSES if c.name == "Pager")
    instance = pager.instance({}, stored.encode())
    browser = show(run_forms("Pager", page, "Night", instance=instance))
    buttons = browser.find_elements(By.NAME, "protocol")
    assert [b.get_property("type") for b in buttons] == ["radio"] * 4
    assert [b.get_property("value") for b in buttons] == PROTOCOLS
    assert [b.get_property("value") for b in buttons if b.is_selected()] == [checked]
    assert label_of(browser, "protocol") == "Protocol:"
    row = buttons[0].find_element(By.XPATH, "..")
    assert row.text.split() == PROTOCOLS


@by_class
def test_the_edit_form_is_posted_in_order_and_without_the_name_that_cannot_be_edited(
        form_class, show, server):
    values = {row.name: b"1 " + row.name.encode() + b' "&<\xE9' for row in form_class.rows}
    browser = show(run_forms(form_class.name, "edit", "Night shift",
                             instance=form_class.instance(values, b"UCP-SMS")))
    rows = [(row.name, shown(values[row.name])) for row in form_class.rows]
    protocol = [("protocol", "UCP-SMS")] if form_class.protocol_field is not None else []
    assert fields_of(posted_form(browser, server)) == [
        ("page", "notify"), ("origname", "Night shift"), ("action", "return"), ("type", form_class.name),
        *rows, *protocol, ("end", "end")]


@by_class
def test_the_add_form_is_posted_in_order_with_the_name_typed(form_class, show, server):
    browser = show(run_forms(form_class.name, "add"))
    for name in ["instancename", *(row.name for row in form_class.rows)]:
        named(browser, name).send_keys(f"typed {name}")
    rows = [(row.name, f"typed {row.name}") for row in form_class.rows]
    protocol = [("protocol", "TAP")] if form_class.protocol_field is not None else []
    assert fields_of(posted_form(browser, server)) == [
        ("page", "notify"), ("origname", ""), ("action", "return"), ("type", form_class.name),
        ("instancename", "typed instancename"), *rows, *protocol, ("end", "end")]


@by_class
def test_what_the_browser_posts_is_what_is_saved(form_class, show, server):
    browser = show(edit_page(form_class, b"old"))
    for row in form_class.rows:
        named(browser, row.name).clear()
        named(browser, row.name).send_keys(f"5 new {row.name}")
    if form_class.protocol_field is not None:
        browser.find_element(By.CSS_SELECTOR, "input[value=NTT]").click()
    saved = run_forms(form_class.name, "submit", posted_form(browser, server),
                      instance=form_class.instance({}))
    assert saved == form_class.instance({row.name: f"5 new {row.name}".encode() for row in form_class.rows},
                                        b"NTT")


@by_class
@pytest.mark.parametrize("page", ["add", "edit"])
def test_inputs_take_as_much_as_is_prescribed(form_class, page, show):
    browser = show(run_forms(form_class.name, page, "Night", instance=form_class.instance({})))
    assert named(browser, "instancename").get_property("maxLength") == 512
    for row in form_class.rows:
        if row.tag == "input":
            expected = 29 if row.name in ("gateway", "destination") else 255
            assert named(browser, row.name).get_property("maxLength") == expected


@by_class
@pytest.mark.parametrize("page", ["add", "edit"])
def test_the_ways_out_lead_to_the_hosts_own_pages(form_class, page, show, server):
    browser = show(run_forms(form_class.name, page, "Night", instance=form_class.instance({})))
    buttons = browser.find_elements(By.CSS_SELECTOR, "form[method=GET i] input[name=action]")
    assert [button.get_property("value") for button in buttons] == ["Notifications", "Top view"]
    forms = [button.find_element(By.XPATH, "ancestor::form") for button in buttons]
    assert [form.get_dom_attribute("action") for form in forms] == ["/_maincfgreg.cgi", "/_top.cgi"]
    assert buttons[0].rect["y"] == buttons[1].rect["y"], "side by side"
    links = browser.find_elements(By.TAG_NAME, "a")
    assert [link.get_property("href") for link in links] == [server.address + "h_edtnot.htm", server.address]
