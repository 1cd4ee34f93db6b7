"""Opens the reference in a browser as a reader would: searches, follows addresses, counts, and looks for complaints.

Usage: reference_test.py NXCORE. Exits with 77, "skipped", where there is no Chromium."""

import json
import pathlib
import subprocess
import sys
import tempfile

import browser

SIZE_LIMIT = 2_000_000
CONTRAST_LIMIT = 4.5  # of text on its ground, as the guidelines for accessibility ask
ENTER, ESCAPE, DOWN, UP = "\ue007", "\ue00c", "\ue015", "\ue013"


class Failures:
    def __init__(self):
        self.count = 0

    def expect(self, truth, what):
        if not truth:
            self.count += 1
            print("FAILED:", what)

    def expect_same(self, got, wanted, what):
        self.expect(got == wanted, f"{what}: got {got!r}, wanted {wanted!r}")


class Page:
    """The reference in a browser, and what the tests ask of it."""

    def __init__(self, chromium, address):
        self.browser = chromium
        self.address = address

    def open(self, anchor=""):
        self.browser.open("about:blank")  # else only the anchor would change
        self.browser.open(self.address + anchor)

    def run(self, script, *arguments):
        return self.browser.run(script, *arguments)

    def search(self, text):
        self.run("search.value = ''; search.focus()")
        self.browser.type_into("#search", text)

    def shown(self):
        """The tokens and names of the entries that are shown."""
        return self.run("""return [...document.querySelectorAll('.entry')]
            .filter(entry => entry.checkVisibility()).map(entry => entry.querySelector('a').textContent)""")

    def focused(self):
        return self.run("return document.activeElement.id")

    def is_in_view(self, address):
        return self.run("""const box = document.getElementById(arguments[0]).getBoundingClientRect();
            const header = document.querySelector('header').getBoundingClientRect();
            return box.height > 0 && box.top >= header.bottom && box.top < innerHeight""", address)


def check_document(page, check):
    page.open()
    check.expect_same(page.run("""const ids = [...document.querySelectorAll('[id]')].map(element => element.id);
        return ids.filter((id, place) => ids.indexOf(id) !== place)"""), [], "addresses that two elements have")
    check.expect_same(page.run("""return [...document.querySelectorAll('a[href^="#"]')]
        .filter(link => !document.getElementById(link.getAttribute('href').slice(1))).map(link => link.href)"""),
                      [], "links that lead nowhere")
    check.expect_same(page.run("return [...document.querySelectorAll('table')].filter(table => !table.caption).length"),
                      0, "tables without a caption")
    check.expect_same(page.run("""return [...document.querySelectorAll('svg')]
        .filter(picture => !picture.getAttribute('aria-label')).length"""), 0, "pictures without a name")


def check_counts(page, check, nxcore):
    def ask(*words):
        return json.loads(subprocess.run([nxcore, *words, "-json"], check=True, capture_output=True).stdout)

    page.open()
    rows = page.run("""const counts = {};
        for (const block of document.querySelectorAll('.block[data-class]'))
            counts[block.dataset.class] = (counts[block.dataset.class] ?? 0) + block.querySelectorAll('.entry').length;
        return counts""")
    listed = ask("list")
    wanted = {row["class"]: row["rows"] for row in listed["enumerations"] + listed["bitMasks"]}
    wanted["nxEnum"] = 3  # common to all, listed with no class
    check.expect_same(rows, wanted, "rows of each class")

    check.expect_same(page.run("return [...document.querySelectorAll('#keys .entry a')].map(key => key.id)"),
                      [row["key"] for row in ask("keys")["keys"]], "keys")
    check.expect_same(
        page.run("""return Object.fromEntries([...document.querySelectorAll('#ladders .entry')].map(entry =>
            [entry.id, entry.querySelectorAll('tbody tr').length]))"""),
        {row["identifier"]: row["ranges"] for row in ask("ladder")["ladders"]}, "ranges of each ladder")
    check.expect_same(
        page.run("return [...document.querySelectorAll('#formats h3 small a')].map(format => format.textContent)"),
        [row["token"] for row in ask("list", "nxPriceFormatEnum")["rows"]], "price formats")
    check.expect_same(
        page.run("return [...document.querySelectorAll('nav span')].map(count => Number(count.textContent))"),
        [581, 442, 149, 33, 352, 150, 28], "counts beside the sections")
    check.expect_same(page.run("""return [...document.querySelectorAll('#formats td')]
        .filter(cell => cell.textContent === 'refused').length"""), 0, "texts that their own converter refuses")


def check_search(page, check, nxcore):
    page.open()
    token = "NX_ERR_ORDER_GATEWAY_HELD_ORDER_DEL_WHEN_CONTINGENT_ORDER_FILLED"
    for text in ("1005064", token, token.lower(), "gateway held contingent filled", "gateway HELD order deleted"):
        page.search(text)
        check.expect_same(page.shown(), [token], "what is shown for " + text)
    page.search("1005")
    numbers = page.run("return [...document.querySelectorAll('.entry:not([hidden]) td:first-child')].map(cell => cell.textContent)")
    check.expect(len(numbers) > 50 and all(number.startswith("1005") for number in numbers),
                 f"a number is found from its beginning, not {numbers}")
    page.search("nxBuySellEnum")
    check.expect_same(page.shown(), ["BUY", "SELL"], "a class is found by its name")
    page.search("nxGenericEnum")
    check.expect(page.run("return document.getElementById('nxGenericEnum').checkVisibility()"),
                 "a class without rows is found by its name")
    page.search("no such word")
    check.expect_same(page.shown(), [], "what is shown for words that nothing has")
    check.expect(page.run("return document.getElementById('none').checkVisibility()"), "the page says that it found nothing")

    found = subprocess.run([nxcore, "list", "-search", "settlement", "-json"], check=True, capture_output=True)
    page.search("settlement")
    missing = {row["token"] for row in json.loads(found.stdout)["rows"]} - set(page.shown())
    check.expect_same(missing, set(), "what nxcore list finds and the page does not")


def check_keyboard(page, check):
    page.open()
    page.browser.press("/")
    check.expect_same(page.focused(), "search", "focus after a slash")
    page.browser.press(*"nx_order_type_", DOWN)
    check.expect_same(page.focused(), "NX_ORDER_TYPE_LIMIT", "focus after going down")
    page.browser.press(DOWN, UP, UP)
    check.expect_same(page.focused(), "search", "focus after going up again")
    page.search("1001")
    page.browser.press(DOWN, ENTER)
    check.expect_same(page.run("return location.hash"), "#NX_ORDER_TYPE_LIMIT", "address of the exact one")
    page.search("limit breach")
    page.browser.press(ENTER)
    check.expect_same(page.run("return location.hash"), page.run("return '#' + document.querySelector('.entry:not([hidden]) a').id"),
                      "address after Enter")
    page.browser.press(ESCAPE)
    check.expect_same(len(page.shown()), page.run("return document.querySelectorAll('.entry').length"),
                      "entries shown after Escape")


def check_addresses(page, check):
    def follow(address):
        page.run("location.hash = arguments[0]; return new Promise(done => setTimeout(done, 50))", address)
        target = page.run("return location.hash.slice(1)")
        check.expect(page.is_in_view(target), f"#{address} is not in view")

    for address in ("1005064", "nx_buy"):
        page.open("#" + address)
        check.expect(page.is_in_view(page.run("return location.hash.slice(1)")), f"#{address} is not in view")
    for address in ("NX_ORDER_TYPE_LIMIT", "BUY", "nxProductStateBitMask.0x1", "KVT_LOG_LEVEL", "CHIX_EUZ1",
                    "VTT_CHIX_EUZ1", "NX_PRICE_FORMAT_DECIMALS", "nxOrderTypeEnum", "formats"):
        follow(address)
    page.search("KVT_LOG")
    follow("1001")  # which the search had hidden


def role_of(page, element):
    node = page.browser.devtools("Runtime.evaluate", expression="document." + element)["result"]["objectId"]
    tree = page.browser.devtools("Accessibility.getPartialAXTree", objectId=node, fetchRelatives=False)
    return tree["nodes"][0]["role"]["value"]


def check_looks(page, check):
    for scheme in ("light", "dark"):
        page.browser.look_as(360, 740, scheme)
        page.open()
        # The window of a phone grows with its page, so that only the number of pixels that were asked for tells.
        check.expect(page.run("return document.scrollingElement.scrollWidth") <= 360, "wider than a phone")
        for ink, paper, ratio in page.run(CONTRASTS):
            check.expect(ratio >= CONTRAST_LIMIT, f"contrast of {ink} on {paper}, {scheme}, is only {ratio:.2f}")
    check.expect_same(role_of(page, "getElementById('1001')"), "row", "what a screen reader takes an entry for on a phone")

    page.browser.look_as(1280, 900)
    check.expect(page.run("""const row = document.getElementById('1001');
        return row.cells[0].offsetWidth < row.offsetWidth / 6"""), "a number takes too much of its row")
    for role, element in (("row", "getElementById('1001')"), ("columnheader", "querySelector('thead th')"),
                          ("rowheader", "querySelector('tbody th')"), ("image", "querySelector('svg')")):
        check.expect_same(role_of(page, element), role, f"what a screen reader takes {element} for")
    page.browser.look_as(1000, 800, media="print")
    check.expect_same(page.run("""return ['form', 'nav', '#status'].filter(
        part => document.querySelector(part).checkVisibility())"""), [], "parts printed that only a screen needs")
    page.browser.look_as(1280, 900)


CONTRASTS = """
    const style = getComputedStyle(document.documentElement);
    const colour = name => style.getPropertyValue('--' + name).trim();
    const luminance = hex => [1, 3, 5].map(place => parseInt(hex.slice(place, place + 2), 16) / 255)
        .map(part => part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4)
        .reduce((sum, part, place) => sum + part * [0.2126, 0.7152, 0.0722][place], 0);
    return ['ink', 'muted', 'accent'].flatMap(ink => ['paper', 'raised', 'target'].map(paper => {
        const [low, high] = [luminance(colour(ink)), luminance(colour(paper))].sort((left, right) => left - right);
        return [ink, paper, (high + 0.05) / (low + 0.05)];
    }))"""


def run(nxcore, directory):
    check = Failures()
    subprocess.run([nxcore, "reference", directory], check=True, stdout=subprocess.DEVNULL)
    file = pathlib.Path(directory) / "index.html"
    check.expect(file.stat().st_size < SIZE_LIMIT, f"{file.stat().st_size} bytes")
    with browser.Browser() as chromium:
        page = Page(chromium, file.as_uri())
        chromium.look_as(1280, 900)
        check_document(page, check)
        check_counts(page, check, nxcore)
        check_search(page, check, nxcore)
        check_keyboard(page, check)
        check_addresses(page, check)
        check_looks(page, check)
        check.expect_same(chromium.console(), [], "lines on the console")
        elsewhere = [url for url in chromium.requests_of(file.as_uri()) if not url.startswith((file.as_uri(), "data:"))]
        check.expect_same(elsewhere, [], "what the page asked for beside itself")
    return check.count


def main():
    absent = browser.missing()
    if absent:
        print("skipped: not installed:", ", ".join(absent))
        return 77
    with tempfile.TemporaryDirectory(prefix="nxcore-reference-") as directory:
        failures = run(sys.argv[1], directory)
    print("the reference holds" if failures == 0 else f"{failures} failures")
    return 1 if failures else 0


sys.exit(main())
