#!/usr/bin/python3
"""Opens the site in a browser as a reader does, and checks what a machine can check.

look.py <folder of the site> <folder for pictures>

Every page at both widths: nothing is wider than the window. Pictures of some, light and dark. The search finds a function, text
can be told from its background, and the browser reports no error.
"""
import pathlib
import shutil
import sys

from selenium import webdriver
from selenium.common.exceptions import StaleElementReferenceException, TimeoutException
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

WIDTHS = (360, 1400)
HEIGHT = 900
PICTURED = ("index", "overview", "hosting", "recipes", "performance", "reliability", "tool", "design", "annotated",
            "classQuorvex_1_1Velmora_1_1TessaportAPI_1_1QvNativeTessaportAPI", "host_2main_8cpp-example")
LEAST_CONTRAST = 4.5  # What WCAG 2 asks for at level AA.
SECONDS = 60

# Content that is cut or scrolls in a box of its own, such as code, is as wide as it likes.
TOO_WIDE = """
    const wide = box => box && box.scrollWidth > box.clientWidth;
    return [document.documentElement, document.body, document.getElementById('doc-content')].some(wide);
"""

# The least contrast between text and what is behind it, of the elements that a selector finds.
CONTRAST = """
    const channels = color => color.match(/[0-9.]+/g).map(Number);
    const luminance = color => {
        const [r, g, b] = channels(color).map(c => c / 255).map(c => c <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
        return 0.2126 * r + 0.7152 * g + 0.0722 * b;
    };
    const behind = element => {
        for (; element; element = element.parentElement) {
            const color = channels(getComputedStyle(element).backgroundColor);
            if (color.length < 4 || color[3] > 0.5)
                return getComputedStyle(element).backgroundColor;
        }
        return 'rgb(255, 255, 255)';
    };
    const seen = [...document.querySelectorAll(arguments[0])].filter(e => e.offsetParent && e.innerText);
    const found = seen.map(e => {
        const [low, high] = [luminance(getComputedStyle(e).color), luminance(behind(e))].sort((a, b) => a - b);
        return [(high + 0.05) / (low + 0.05), e.innerText.slice(0, 40)];
    });
    return found.sort((a, b) => a[0] - b[0])[0] || null;
"""
TEXT = "div.contents :is(p, a, code, td, .line, .line span, .levels span)"


def open_browser():
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for option in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--allow-file-access-from-files"):
        options.add_argument(option)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    browser = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
    browser.set_page_load_timeout(SECONDS)
    return browser


class Reader:
    def __init__(self, site, pictures):
        self.site = site
        self.pictures = pictures
        self.browser = open_browser()
        self.failures = []

    def expect(self, condition, message):
        if not condition:
            self.failures.append(message)
            print(message)

    def set_screen(self, width, scheme):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": HEIGHT, "deviceScaleFactor": 1, "mobile": width < 700})
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def open(self, name):
        self.browser.get((self.site / f"{name}.html").as_uri())
        for entry in self.browser.get_log("browser"):
            self.expect(entry["level"] != "SEVERE", f"{name}: the browser reports: {entry['message']}")

    def check_widths(self, names):
        for width in WIDTHS:
            self.set_screen(width, "light")
            for name in names:
                self.open(name)
                self.expect(not self.browser.execute_script(TOO_WIDE), f"{name} is wider than a window of {width} pixels")

    def take_pictures(self):
        for scheme in ("light", "dark"):
            for width in WIDTHS:
                self.set_screen(width, scheme)
                for name in PICTURED:
                    self.open(name)
                    self.check_contrast(name, scheme)
                    self.browser.save_screenshot(str(self.pictures / f"{name}-{width}-{scheme}.png"))

    def check_contrast(self, name, scheme):
        least = self.browser.execute_script(CONTRAST, TEXT)
        self.expect(least is not None, f"{name} shows no text")
        if least is not None:
            self.expect(least[0] >= LEAST_CONTRAST, f"{name}, {scheme}: '{least[1]}' has a contrast of {least[0]:.2f}")

    def search(self, name):
        """Types a name, and reads the results."""
        self.set_screen(WIDTHS[1], "light")
        self.open("index")
        # Results are made anew while one types.
        wait = WebDriverWait(self.browser, SECONDS, ignored_exceptions=[StaleElementReferenceException])
        wait.until(lambda browser: browser.find_element(By.ID, "MSearchField").is_displayed())
        self.browser.find_element(By.ID, "MSearchField").send_keys(name)
        wait.until(lambda browser: browser.find_element(By.ID, "MSearchResultsWindow").is_displayed())
        frames = self.browser.find_elements(By.CSS_SELECTOR, "iframe#MSearchResults")
        if frames:
            self.browser.switch_to.frame(frames[0])
        try:
            wait.until(lambda browser: name in [result.text for result in browser.find_elements(By.CLASS_NAME, "SRSymbol")
                                                if result.is_displayed()])
        except TimeoutException:
            self.expect(False, f"the search does not find {name}")
        self.browser.switch_to.default_content()
        self.browser.save_screenshot(str(self.pictures / "search.png"))


def main():
    site, pictures = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    names = sorted(page.stem for page in site.glob("*.html") if not page.stem.endswith(("_source", "-members")))
    reader = Reader(site, pictures)
    try:
        reader.check_widths(names)
        reader.take_pictures()
        reader.search("getFolderContents")
    finally:
        reader.browser.quit()
    print(f"{len(names)} pages, {len(list(pictures.iterdir()))} pictures, {len(reader.failures)} failures")
    return 1 if reader.failures else 0


if __name__ == "__main__":
    sys.exit(main())
