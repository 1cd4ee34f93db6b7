"""Opens the reference in a browser as a reader would: searches, follows addresses, counts, looks for complaints.

Usage: reference_test.py NXCORE. Exits with 77, "skipped", where there is no Chromium or no Selenium."""

import json
import pathlib
import subprocess
import sys
import tempfile

try:
    import browser
except ImportError as error:
    print("skipped:", error)
    sys.exit(77)

CONTRAST_LIMIT = 4.5  # of text on its ground, as the guidelines for accessibility ask
ENTER, ESCAPE, DOWN, UP = "\ue007", "\ue00c", "\ue015", "\ue013"
NXCORE = sys.argv[1]
failures = 0


def expect(truth, what):
    global failures
    if not truth:
        failures += 1
        print("FAILED:", what)


def expect_same(got, wanted, what):
    expect(got == wanted, f"{what}: got {got!r}, wanted {wanted!r}")


def ask(*words):
    return json.loads(subprocess.run([NXCORE, *words, "-json"], check=True, capture_output=True).stdout)


class Page(browser.Browser):
    """The reference in a browser, and what the tests ask of it."""

    def __init__(self, address):
        super().__init__()
        self.address = address

    def show(self, anchor=""):
        self.get("about:blank")  # else only the anchor would change
        self.get(self.address + anchor)

    def expect_none(self, what, expression):
        expect_same(self.run("return " + expression), [], what)

    def texts_of(self, selector):
        return self.run("return [...document.querySelectorAll(arguments[0])].map(part => part.textContent)",
                        selector)

    def search(self, text):
        self.run("search.value = ''; search.focus()")
        self.type_into("#search", text)

    def shown(self):
        """The tokens and names of the entries that are shown."""
        return self.run("""return [...document.querySelectorAll('.entry')]
            .filter(entry => entry.checkVisibility()).map(entry => entry.querySelector('a').textContent)""")

    def focused(self):
        return self.run("return document.activeElement.id")

    def target(self):
        return self.run("return location.hash.slice(1)")

    def expect_in_view(self, address):
        expect(self.run("""const box = document.getElementById(arguments[0]).getBoundingClientRect();
            const header = document.querySelector('header').getBoundingClientRect();
            return box.height > 0 && box.top >= header.bottom && box.top < innerHeight""", self.target()),
               f"#{address} is not in view")

    def follow(self, address):
        self.run("location.hash = arguments[0]; return new Promise(done => setTimeout(done, 50))", address)
        self.expect_in_view(address)

    def role_of(self, element):
        node = self.devtools("Runtime.evaluate", {"expression": "document." + element})["result"]["objectId"]
        tree = self.devtools("Accessibility.getPartialAXTree", {"objectId": node, "fetchRelatives": False})
        return tree["nodes"][0]["role"]["value"]


def check_document(page):
    page.expect_none("addresses that two elements have", """[...document.querySelectorAll('[id]')]
        .map(element => element.id).filter((id, place, ids) => ids.indexOf(id) !== place)""")
    page.expect_none("links that lead nowhere", """[...document.querySelectorAll('a[href^="#"]')]
        .filter(link => !document.getElementById(link.getAttribute('href').slice(1))).map(link => link.href)""")
    page.expect_none("tables without a caption", """[...document.querySelectorAll('table')]
        .filter(table => !table.caption).map(table => table.textContent)""")
    page.expect_none("pictures without a name", """[...document.querySelectorAll('svg')]
        .filter(picture => !picture.getAttribute('aria-label')).map(picture => picture.textContent)""")
    page.expect_none("texts that their own converter refuses", """[...document.querySelectorAll('#formats tr')]
        .map(row => row.textContent).filter(text => text.includes('refused'))""")


def check_counts(page):
    rows = page.run("""const counts = {};
        for (const block of document.querySelectorAll('.block[data-class]'))
            counts[block.dataset.class] = (counts[block.dataset.class] ?? 0)
                + block.querySelectorAll('.entry').length;
        return counts""")
    listed = ask("list")
    wanted = {row["class"]: row["rows"] for row in listed["enumerations"] + listed["bitMasks"]}
    expect_same(rows, wanted | {"nxEnum": 3}, "rows of each class")  # 3 common to all, listed with no class
    expect_same(page.run("return [...document.querySelectorAll('#keys .entry a')].map(key => key.id)"),
                [row["key"] for row in ask("keys")["keys"]], "keys")
    expect_same(page.run("""return Object.fromEntries([...document.querySelectorAll('#ladders .entry')].map(entry =>
                    [entry.id, entry.querySelectorAll('tbody tr').length]))"""),
                {row["identifier"]: row["ranges"] for row in ask("ladder")["ladders"]}, "ranges of each ladder")
    expect_same(page.texts_of("#formats h3 small a"),
                [row["token"] for row in ask("list", "nxPriceFormatEnum")["rows"]], "price formats")
    expect_same(page.texts_of("nav span"), "581 442 149 33 352 150 28".split(), "counts beside the sections")


def check_search(page):
    token = "NX_ERR_ORDER_GATEWAY_HELD_ORDER_DEL_WHEN_CONTINGENT_ORDER_FILLED"
    for text, wanted in (("1005064", [token]), (token.lower(), [token]), ("gateway HELD order deleted", [token]),
                         ("nxBuySellEnum", ["BUY", "SELL"]), ("no such word", [])):
        page.search(text)
        expect_same(page.shown(), wanted, "what is shown for " + text)
    expect(page.run("return none.checkVisibility()"), "the page says that it found nothing")
    page.search("1005")
    numbers = page.texts_of(".entry:not([hidden]) td:first-child")
    expect(len(numbers) > 50 and all(number.startswith("1005") for number in numbers),
           f"a number is found from its beginning, not {numbers}")
    page.search("nxGenericEnum")
    expect(page.run("return nxGenericEnum.checkVisibility()"), "a class without rows is found by its name")
    page.search("settlement")
    missing = {row["token"] for row in ask("list", "-search", "settlement")["rows"]} - set(page.shown())
    expect_same(missing, set(), "what nxcore list finds and the page does not")


def check_keyboard(page):
    page.press("/")
    expect_same(page.focused(), "search", "focus after a slash")
    page.press(*"nx_order_type_", DOWN)
    expect_same(page.focused(), "NX_ORDER_TYPE_LIMIT", "focus after going down")
    page.press(DOWN, UP, UP)
    expect_same(page.focused(), "search", "focus after going up again")
    page.search("1001")
    page.press(DOWN, ENTER)
    expect_same(page.target(), "NX_ORDER_TYPE_LIMIT", "address of the exact one")
    page.search("limit breach")
    page.press(ENTER)
    expect_same(page.target(), page.run("return document.querySelector('.entry:not([hidden]) a').id"),
                "address after Enter")
    page.press(ESCAPE)
    expect_same(len(page.shown()), len(page.texts_of(".entry")), "entries shown after Escape")


def check_addresses(page):
    for address in ("1005064", "nx_buy"):
        page.show("#" + address)
        page.expect_in_view(address)
    for address in ("NX_ORDER_TYPE_LIMIT", "BUY", "nxProductStateBitMask.0x1", "KVT_LOG_LEVEL", "CHIX_EUZ1",
                    "VTT_CHIX_EUZ1", "NX_PRICE_FORMAT_DECIMALS", "nxOrderTypeEnum", "formats"):
        page.follow(address)
    page.search("KVT_LOG")
    page.follow("1001")  # which the search had hidden


def check_looks(page):
    for scheme in ("light", "dark"):
        page.look_as(360, 740, scheme)
        page.show()
        # The window of a phone grows with its page: only the number of pixels that were asked for tells.
        expect(page.run("return document.scrollingElement.scrollWidth") <= 360, "wider than a phone")
        for ink, paper, ratio in page.run(CONTRASTS):
            expect(ratio >= CONTRAST_LIMIT, f"contrast of {ink} on {paper}, {scheme}, is only {ratio:.2f}")
    expect_same(page.role_of("getElementById('1001')"), "row", "what a screen reader takes an entry for, on a phone")

    page.look_as(1280, 900)
    expect(page.run("const row = document.getElementById('1001'); "
                    "return row.cells[0].offsetWidth < row.offsetWidth / 6"), "a number takes too much of its row")
    for role, element in (("row", "getElementById('1001')"), ("columnheader", "querySelector('thead th')"),
                          ("rowheader", "querySelector('tbody th')"), ("image", "querySelector('svg')")):
        expect_same(page.role_of(element), role, f"what a screen reader takes {element} for")
    page.look_as(1000, 800, media="print")
    page.expect_none("parts printed that only a screen needs",
                     "['form', 'nav', '#status'].filter(part => document.querySelector(part).checkVisibility())")


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

if browser.missing():
    print("skipped: not installed:", ", ".join(browser.missing()))
    sys.exit(77)
with tempfile.TemporaryDirectory(prefix="nxcore-reference-") as directory:
    subprocess.run([NXCORE, "reference", directory], check=True, stdout=subprocess.DEVNULL)
    address = pathlib.Path(directory, "index.html").as_uri()
    with Page(address) as page:
        page.look_as(1280, 900)
        for check in (check_document, check_counts, check_search, check_keyboard, check_addresses, check_looks):
            page.show()
            check(page)
        expect_same(page.console(), [], "lines on the console")
        elsewhere = [url for url in page.requests_of(address) if not url.startswith((address, "data:"))]
        expect_same(elsewhere, [], "what the page asked for beside itself")
print(f"{failures} failures" if failures else "the reference holds")
sys.exit(failures > 0)
