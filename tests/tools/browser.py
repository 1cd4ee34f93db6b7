"""A headless Chromium, driven by Selenium."""

import json
import os
import shutil

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By

FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync",
         "--disable-dev-shm-usage", "--hide-scrollbars"]


def missing():
    """The names of the programs that are needed and not installed."""
    return [name for name in ("chromium", "chromedriver") if shutil.which(name) is None]


class Browser(webdriver.Chrome):
    """Use as a context: the programs end with it, and the profile is gone."""

    def __init__(self):
        os.environ["NO_PROXY"] = "localhost,127.0.0.1"  # the driver is on this host
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium")
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        for flag in FLAGS:
            options.add_argument(flag)
        super().__init__(options=options, service=Service(shutil.which("chromedriver")))

    run = webdriver.Chrome.execute_script
    devtools = webdriver.Chrome.execute_cdp_cmd

    def type_into(self, selector, text):
        self.find_element(By.CSS_SELECTOR, selector).send_keys(text)

    def press(self, *keys):
        """Presses keys wherever the focus is."""
        ActionChains(self).send_keys(*keys).perform()

    def look_as(self, width, height, scheme="light", scale=1, media=""):
        """Sets the size of the window's page in CSS pixels, and light or dark."""
        self.devtools("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": scale, "mobile": width < 600})
        self.devtools("Emulation.setEmulatedMedia", {
            "media": media, "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def console(self):
        """The lines of the console since the last call."""
        return [line["message"] for line in self.get_log("browser")]

    def requests_of(self, address):
        """What a page has asked for since the last call."""
        events = [json.loads(line["message"])["message"] for line in self.get_log("performance")]
        sent = [event["params"] for event in events if event["method"] == "Network.requestWillBeSent"]
        return [request["request"]["url"] for request in sent if request["documentURL"].startswith(address)]
