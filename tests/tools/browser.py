"""A headless Chromium, driven through chromedriver by its HTTP protocol; needs nothing but Python."""

import base64
import contextlib
import json
import re
import shutil
import subprocess
import tempfile
import urllib.error
import urllib.request

FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync",
         "--disable-dev-shm-usage", "--hide-scrollbars"]
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # the protocol's key of an element's identifier


def missing():
    """The names of the programs that are needed and not installed."""
    return [name for name in ("chromium", "chromedriver") if shutil.which(name) is None]


class Browser:
    """Use as a context: the programs end with it, and the profile is gone."""

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            profile = stack.enter_context(tempfile.TemporaryDirectory(prefix="nxcore-browser-"))
            driver = stack.enter_context(subprocess.Popen(
                ["chromedriver", "--port=0"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True))
            stack.callback(driver.terminate)
            ports = (re.search(r"started successfully on port (\d+)", line) for line in driver.stdout)
            self._session = f"http://127.0.0.1:{next(filter(None, ports))[1]}/session"
            options = {"binary": shutil.which("chromium"), "args": [*FLAGS, "--user-data-dir=" + profile]}
            wanted = {"goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"}}
            self._session += "/" + self._post("", capabilities={"alwaysMatch": wanted})["sessionId"]
            stack.callback(self._call, "DELETE", "")
            self._ends = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._ends.close()

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        kind = {"Content-Type": "application/json"}
        request = urllib.request.Request(self._session + path, data, kind, method=method)
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))  # the driver is on this host
        try:
            with opener.open(request, timeout=60) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def _post(self, path, **body):
        return self._call("POST", path, body)

    def open(self, address):
        self._post("/url", url=address)

    def run(self, script, *arguments):
        """What the script returns; its arguments are in `arguments`."""
        return self._post("/execute/sync", script=script, args=list(arguments))

    def type_into(self, selector, text):
        """Types the text; keys such as Enter are characters of the protocol's own, U+E000 and up."""
        element = self._post("/element", using="css selector", value=selector)[ELEMENT]
        self._post("/element/%s/value" % element, text=text)

    def press(self, *keys):
        """Presses keys wherever the focus is."""
        strokes = [{"type": kind, "value": key} for key in keys for kind in ("keyDown", "keyUp")]
        self._post("/actions", actions=[{"type": "key", "id": "keyboard", "actions": strokes}])

    def devtools(self, command, **parameters):
        return self._post("/goog/cdp/execute", cmd=command, params=parameters)

    def look_as(self, width, height, scheme="light", scale=1, media=""):
        """Sets the size of the window's page in CSS pixels, and light or dark."""
        self.devtools("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=scale,
                      mobile=width < 600)
        self.devtools("Emulation.setEmulatedMedia", media=media,
                      features=[{"name": "prefers-color-scheme", "value": scheme}])

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self._call("GET", "/screenshot")))

    def console(self):
        """The lines of the console since the last call."""
        return [line["message"] for line in self._post("/se/log", type="browser")]

    def requests_of(self, address):
        """What a page has asked for since the last call."""
        events = [json.loads(line["message"])["message"] for line in self._post("/se/log", type="performance")]
        sent = [event["params"] for event in events if event["method"] == "Network.requestWillBeSent"]
        return [request["request"]["url"] for request in sent if request["documentURL"].startswith(address)]
