"use strict";
{
  const search = document.getElementById("search");
  const status = document.getElementById("status");
  const best = document.getElementById("best");
  const none = document.getElementById("none");

  const textOf = element => element.textContent.toLowerCase();

  /** An entry as the search sees it. The class counts only for words that begin as class names do. */
  const entries = [...document.querySelectorAll(".entry")].map(element => ({
    element,
    text: textOf(element),
    className: (element.closest(".block")?.dataset.class ?? "").toLowerCase(),
    link: element.querySelector("a"),
    hidden: false,
  }));

  const blocks = [...document.querySelectorAll(".block")].map(element => ({
    element,
    name: (element.dataset.class ?? "").toLowerCase(),
    entries: entries.filter(entry => element.contains(entry.element)),
  }));
  const domains = [...document.querySelectorAll(".domain")];

  const chapters = [...document.querySelectorAll(".chapter")].map(element => ({
    element,
    link: document.querySelector(`nav a[href="#${element.id}"]`),
    entries: entries.filter(entry => element.contains(entry.element)),
  }));

  /** Numbers, tokens, enumerators and names, each leading to its entry; the first of two has the word. */
  const byWord = new Map();
  for (const entry of entries) {
    const words = [entry.element.id, entry.link.id, entry.link.textContent,
                   entry.element.querySelector("th small")?.textContent];
    for (const word of words)
      if (word && !byWord.has(word.toLowerCase()))
        byWord.set(word.toLowerCase(), entry);
  }

  /** A number is looked for where a number begins, so that 1005 doesn't find 21005. */
  function matcherOf(word) {
    if (/^\d+$/.test(word)) {
      const number = new RegExp(`(?<![\\d.])${word}`);
      return entry => number.test(entry.text);
    }
    if (/^nx[a-z]/.test(word))
      return entry => entry.text.includes(word) || entry.className.includes(word);
    return entry => entry.text.includes(word);
  }

  function show(element, isShown) {
    if (element.hidden === isShown)
      element.hidden = !isShown;
  }

  const plural = (count, one, many) => `${count.toLocaleString("en")} ${count === 1 ? one : many}`;

  function highlight(words) {
    if (!CSS.highlights)
      return;
    CSS.highlights.delete("found");
    const shown = entries.filter(entry => !entry.hidden);
    if (words.length === 0 || shown.length > 400)
      return;
    const ranges = [];
    for (const {element} of shown) {
      const walker = document.createTreeWalker(element, NodeFilter.SHOW_TEXT);
      while (walker.nextNode())
        for (const word of words) {
          const place = walker.currentNode.data.toLowerCase().indexOf(word);
          if (place < 0)
            continue;
          const range = new Range();
          range.setStart(walker.currentNode, place);
          range.setEnd(walker.currentNode, place + word.length);
          ranges.push(range);
        }
    }
    CSS.highlights.set("found", new Highlight(...ranges));
  }

  function showBest(query) {
    const entry = byWord.get(query);
    best.hidden = !entry;
    if (!entry)
      return;
    const cells = [...entry.element.querySelectorAll("td, th")].map(cell => cell.firstChild?.textContent ?? "");
    const link = document.createElement("a");
    const token = document.createElement("code");
    token.textContent = entry.link.textContent;
    link.href = entry.link.getAttribute("href");
    link.append(token);
    const others = entry.element.matches("tr") ? cells.filter(text => text && text !== token.textContent) : [];
    best.replaceChildren(link, " ", [entry.element.closest(".block")?.dataset.class, ...others]
      .filter(Boolean).join(" · "));
  }

  function filter() {
    const query = search.value.trim().toLowerCase();
    const words = query.split(/\s+/).filter(Boolean);
    const matchers = words.map(matcherOf);
    let count = 0;
    for (const entry of entries) {
      entry.hidden = !matchers.every(matches => matches(entry));
      count += entry.hidden ? 0 : 1;
      show(entry.element, !entry.hidden);
    }
    for (const block of blocks) // a class without rows is found by its name alone
      show(block.element, block.entries.length === 0 ? words.every(word => block.name.includes(word))
                                                     : block.entries.some(entry => !entry.hidden));
    for (const domain of domains)
      show(domain, domain.querySelector(".block:not([hidden])") !== null);
    for (const {element, link, entries: own} of chapters) {
      const found = own.filter(entry => !entry.hidden).length;
      const isShown = element.querySelector(".block:not([hidden]), article:not([hidden])") !== null;
      show(element, isShown);
      link.classList.toggle("empty", !isShown);
      link.querySelector("span").textContent =
        words.length === 0 ? Number(element.dataset.count).toLocaleString("en") : found.toLocaleString("en");
    }
    none.hidden = count > 0 || blocks.some(block => !block.element.hidden);
    status.textContent = words.length === 0 ? plural(count, "entry", "entries") : plural(count, "match", "matches");
    showBest(query);
    highlight(words);
  }

  /** Goes to an address, also to one that is a token or name in other letters; shows everything again if it is hidden. */
  function follow() {
    const address = decodeURIComponent(location.hash.slice(1));
    if (!address)
      return;
    const target = document.getElementById(address);
    if (!target) {
      const entry = byWord.get(address.toLowerCase());
      if (entry)
        location.replace(entry.link.getAttribute("href"));
      return;
    }
    if (target.closest("[hidden]")) {
      search.value = "";
      filter();
    }
    target.scrollIntoView({block: "center", behavior: "instant"});
    if (target.matches("h2, section, .chapter, body"))
      target.scrollIntoView({block: "start", behavior: "instant"});
    const entry = entries.find(({element}) => element === target || element.contains(target));
    entry?.link.focus({preventScroll: true});
  }

  /** Down and up move among the entries that are shown, from the field and back to it; the exact one comes first. */
  function move(step) {
    const shown = entries.filter(entry => !entry.hidden).map(entry => entry.link);
    if (!best.hidden)
      shown.unshift(best.querySelector("a"));
    const place = shown.indexOf(document.activeElement);
    const next = place + step;
    if (next < 0) {
      search.focus();
      return;
    }
    shown[Math.min(next, shown.length - 1)]?.focus();
    document.activeElement.scrollIntoView({block: "nearest", behavior: "instant"});
  }

  document.addEventListener("keydown", event => {
    const isSearching = document.activeElement === search;
    const isAmongEntries = document.activeElement.closest(".entry, #best") !== null;
    if (event.ctrlKey || event.metaKey || event.altKey)
      return;
    if (event.key === "/" && !isSearching) {
      search.focus();
      search.select();
    } else if (event.key === "Escape" && search.value !== "") {
      search.value = "";
      filter();
      search.focus();
    } else if (event.key === "ArrowDown" && (isSearching || isAmongEntries)) {
      move(1);
    } else if (event.key === "ArrowUp" && isAmongEntries) {
      move(-1);
    } else {
      return;
    }
    event.preventDefault();
  });

  search.form.addEventListener("submit", event => {
    event.preventDefault();
    const entry = byWord.get(search.value.trim().toLowerCase()) ?? entries.find(candidate => !candidate.hidden);
    if (entry)
      location.hash = entry.link.getAttribute("href");
  });
  search.addEventListener("input", filter);
  addEventListener("hashchange", follow);
  filter();
  follow();
}
