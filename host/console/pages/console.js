// What the console does beside its pages, which do without it: they follow what happens.
"use strict";

// Pages of which a part is live are fetched anew when something has changed, and that part is exchanged. Whoever
// is within it with the keyboard stays there.
function followChanges(part) {
  let timer = 0;
  const exchange = async () => {
    timer = 0;
    const response = await fetch(location.href, { headers: { Accept: "text/html" } });
    if (!response.ok || response.redirected) return;
    const page = new DOMParser().parseFromString(await response.text(), "text/html");
    const fresh = page.getElementById("live");
    if (!fresh) return;
    const focused = part.contains(document.activeElement) ? document.activeElement.getAttribute("href") : null;
    part.replaceChildren(...fresh.childNodes);
    if (focused) part.querySelector(`[href="${CSS.escape(focused)}"]`)?.focus();
  };
  const events = new EventSource(part.dataset.live);
  events.addEventListener("change", () => {
    if (!timer) timer = setTimeout(exchange, 200);
  });
}

function followSend(part) {
  const phases = document.getElementById("phases");
  const log = document.getElementById("log");
  phases.replaceChildren();
  log.textContent = "";
  const events = new EventSource(part.dataset.send);
  events.addEventListener("phase", (event) => {
    const item = document.createElement("li");
    item.textContent = event.data;
    phases.append(item);
  });
  events.addEventListener("log", (event) => {
    const isAtEnd = log.scrollTop + log.clientHeight >= log.scrollHeight - 4;
    log.append(event.data);
    if (isAtEnd) log.scrollTop = log.scrollHeight;
  });
  events.addEventListener("end", () => {
    events.close();
    location.reload();
  });
}

for (const part of document.querySelectorAll("[data-live]")) followChanges(part);
for (const part of document.querySelectorAll("[data-send]")) followSend(part);
