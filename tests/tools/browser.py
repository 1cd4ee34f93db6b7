"""A headless Chromium, driven through chromedriver by its HTTP protocol; needs nothing but Python."""

import base64
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
        self._profile = tempfile.TemporaryDirectory(prefix="nxcore-browser-")
        self._driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)
        try:
            self._root = "http://127.0.0.1:%d" % self._read_port()
            self._session = "/session/" + self._start()
        except BaseException:
            self._stop_driver()
            raise
        return self

    def __exit__(self, *_):
        try:
            self._call("DELETE", self._session)
        finally:
            self._stop_driver()

    def _stop_driver(self):
        self._driver.terminate()
        self._driver.wait(10)
        self._driver.stdout.close()
        self._profile.cleanup()

    def _read_port(self):
        for line in self._driver.stdout:
            found = re.search(r"started successfully on port (\d+)", line)
            if found:
                return int(found[1])
        raise RuntimeError("chromedriver did not start")

    def _start(self):
        options = {"binary": shutil.which("chromium"), "args": FLAGS + ["--user-data-dir=" + self._profile.name]}
        wanted = {"goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"}}
        return self._call("POST", "/session", {"capabilities": {"alwaysMatch": wanted}})["sessionId"]

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self._root + path, data, {"Content-Type": "application/json"}, method=method)
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))  # the driver is on this host
        try:
            with opener.open(request, timeout=60) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def _post(self, path, **body):
        return self._call("POST", self._session + path, body)

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
            file.write(base64.b64decode(self._call("GET", self._session + "/screenshot")))

    def console(self):
        """The lines of the console since the last call."""
        return [line["message"] for line in self._post("/se/log", type="browser")]

    def requests_of(self, address):
        """What a page has asked for since the last call."""
        events = [json.loads(line["message"])["message"] for line in self._post("/se/log", type="performance")]
        sent = [event["params"] for event in events if event["method"] == "Network.requestWillBeSent"]
        return [request["request"]["url"] for request in sent if request["documentURL"].startswith(address)]
