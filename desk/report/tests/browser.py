"""A headless browser with a page open, that counts what the page asks the network for."""
import json
import pathlib

from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait


class Browser:
    def __init__(self):
        options = webdriver.ChromeOptions()
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                         "--force-prefers-reduced-motion", "--allow-file-access-from-files=false"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"performance": "ALL", "browser": "ALL"})
        self.driver = webdriver.Chrome(options=options)
        self.driver.set_page_load_timeout(60)

    def close(self):
        self.driver.quit()

    def open(self, path, address="", width=1280, height=1200):
        """Opens a report and waits until it is read."""
        self.driver.set_window_size(width, height)
        self.driver.get("about:blank")
        self.driver.get_log("performance")
        self.driver.get(pathlib.Path(path).resolve().as_uri() + address)
        WebDriverWait(self.driver, 60).until(lambda driver: driver.execute_script(
            "return document.body && document.body.dataset.ready === 'yes'"))

    def scheme(self, name):
        """"dark" or "light"."""
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": name}]})

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.find(selector).text

    def requests(self):
        """Addresses that were asked for since the page was opened, but for the page's own."""
        asked = []
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                asked.append(message["params"]["request"]["url"])
        return [address for address in asked if not address.startswith(("file:", "about:", "data:"))]

    def errors(self):
        """What the page's script complained of."""
        return [entry["message"] for entry in self.driver.get_log("browser") if entry["level"] == "SEVERE"]

    def screenshot(self, path):
        self.driver.save_screenshot(str(path))
