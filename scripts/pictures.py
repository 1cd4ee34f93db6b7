#!/usr/bin/env python3
"""Draws the pictures of the documentation anew: scripts/pictures.py [NXCORE]. The one of the reference needs Chromium,
its driver and Selenium."""

import html
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
IMAGES = ROOT / "docs" / "images"
LETTER, LINE, MARGIN = 7.83, 19, 20  # of a terminal's font of 13 pixels

STYLE = """<style>
text { font: 13px ui-monospace, "DejaVu Sans Mono", Menlo, Consolas, monospace; fill: #1d2733; white-space: pre }
rect { fill: #f6f8fa } .command { fill: #0a5fc2 } .heading { font-weight: 600 }
@media (prefers-color-scheme: dark) { text { fill: #e4e9ef } rect { fill: #11161c } .command { fill: #74b6ff } }
</style>"""


def terminal(command, lines):
    """What a terminal shows of a command, as a picture whose text can be read."""
    width = 2 * MARGIN + LETTER * max(map(len, lines))
    height = 2 * MARGIN + LINE * (len(lines) + 1)
    rows = [f'<text class="command" x="{MARGIN}" y="{MARGIN + 10}">$ {html.escape(command)}</text>']
    for number, line in enumerate(lines, 1):
        name = ' class="heading"' if number == 1 else ""
        rows.append(f'<text{name} x="{MARGIN}" y="{MARGIN + 10 + number * LINE}" textLength="{LETTER * len(line):.0f}"'
                    f' xml:space="preserve">{html.escape(line)}</text>')
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height}" role="img" '
            f'aria-label="What {html.escape(command)} prints">\n{STYLE}\n<rect width="100%" height="100%" rx="8"/>\n'
            + "\n".join(rows) + "\n</svg>\n")


def draw_reference(nxcore):
    sys.path.insert(0, str(ROOT / "tests" / "tools"))
    import browser

    with tempfile.TemporaryDirectory() as directory, browser.Browser() as chromium:
        subprocess.run([nxcore, "reference", directory], check=True, stdout=subprocess.DEVNULL)
        chromium.look_as(1200, 760)
        chromium.get(pathlib.Path(directory, "index.html").as_uri())
        chromium.type_into("#search", "stop")
        chromium.save_screenshot(str(IMAGES / "reference.png"))


def main():
    nxcore = sys.argv[1] if len(sys.argv) > 1 else str(ROOT / "build/release/tools/nxcore/nxcore")
    IMAGES.mkdir(exist_ok=True)
    board = subprocess.run([nxcore, "board", "examples/products.csv"], cwd=ROOT, check=True, capture_output=True,
                           text=True).stdout.rstrip("\n").split("\n")
    (IMAGES / "board.svg").write_text(terminal("./run", board))
    subprocess.run([nxcore, "ladder", "CXE_mifid_5", "-svg", str(IMAGES / "ladder.svg")], check=True,
                   stdout=subprocess.DEVNULL)
    draw_reference(nxcore)


main()
