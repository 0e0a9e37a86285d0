#!/usr/bin/env python3
"""The web converter in headless Chromium, the site served on 127.0.0.1.

    tests/web/browser_test.py SITE_DIR NATIVE_CLI SCREENSHOT.png

A font converted on the page downloads the same bytes the native command line
writes; a broken font file shows the "Parameter Error" text; Cancel during a
large conversion (after its status text and
progress have shown) leaves no download; the live preview canvas has ink.
"""
import os
import shutil
import socket
import subprocess
import sys
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

DEJAVU = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
IPAG = "/usr/share/fonts/opentype/ipafont-gothic/ipag.ttf"


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def wait_for(driver, what, seconds=60):
    return WebDriverWait(driver, seconds, poll_frequency=0.1).until(lambda d: what(d))


def status(driver):
    return driver.find_element(By.ID, "status").get_attribute("value")


def set_value(driver, element_id, value):
    driver.execute_script(
        "const e = document.getElementById(arguments[0]); e.value = arguments[1];"
        "e.dispatchEvent(new Event('input', {bubbles: true}));", element_id, value)


def set_checked(driver, element_id, on):
    box = driver.find_element(By.ID, element_id)
    if box.is_selected() != on:
        box.click()


def convert(driver):
    driver.find_element(By.ID, "convert").click()


def main():
    site, native, screenshot = sys.argv[1], os.path.abspath(sys.argv[2]), sys.argv[3]
    work = tempfile.mkdtemp()
    downloads = os.path.join(work, "downloads")
    os.mkdir(downloads)
    port = free_port()
    server = subprocess.Popen([sys.executable, "-m", "http.server", str(port), "--bind", "127.0.0.1",
                               "--directory", site], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium") or "/usr/bin/chromium"
    for arg in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                "--window-size=1280,800"):
        options.add_argument(arg)
    options.add_experimental_option("prefs", {"download.default_directory": downloads,
                                              "download.prompt_for_download": False})
    driver = None
    failures = []
    try:
        for _ in range(50):
            try:
                socket.create_connection(("127.0.0.1", port), 0.2).close()
                break
            except OSError:
                time.sleep(0.1)
        driver = webdriver.Chrome(service=Service(shutil.which("chromedriver") or "/usr/bin/chromedriver"),
                                  options=options)
        driver.execute_cdp_cmd("Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": downloads})
        driver.get(f"http://127.0.0.1:{port}/index.html")
        driver.execute_script("localStorage.clear()")
        driver.refresh()
        wait_for(driver, lambda d: d.execute_script("return document.getElementById('grid-order').options.length") > 0)

        # DejaVu Sans, 16 px, 16 levels, "Hello, world": the download is the native file.
        driver.find_element(By.ID, "font-file").send_keys(DEJAVU)
        set_value(driver, "font-size", "16")
        set_value(driver, "font-levels", "16")
        set_checked(driver, "use-filter", True)
        set_value(driver, "filter-chars", "Hello, world")
        convert(driver)
        wait_for(driver, lambda d: status(d) in (" Finish", " Convert Error"))
        got = os.path.join(downloads, "DejaVuSans.zgly")
        wait_for(driver, lambda d: os.path.exists(got), 20)
        subprocess.run([native, "convert", "--from-font", DEJAVU, "--size", "16", "--levels", "16",
                        "--to-zgly", os.path.join(work, "native.zgly"),
                        "--chars", "Hello, world", "--quiet"], check=True)
        with open(got, "rb") as a, open(os.path.join(work, "native.zgly"), "rb") as b:
            if a.read() != b.read():
                failures.append("the page's DejaVuSans.zgly differs from the native one")

        # The live preview of the sample text has ink.
        def inked(d):
            return d.execute_script(
                "const c = document.getElementById('preview'); if (c.width < 20) return 0;"
                "const p = c.getContext('2d').getImageData(0, 0, c.width, c.height).data; let n = 0;"
                "for (let i = 0; i < p.length; i += 4) if (p[i + 3] > 0 && p[i] < 128) n++; return n;")
        try:
            wait_for(driver, lambda d: inked(d) > 50, 30)
        except Exception:
            failures.append("the live preview canvas shows no ink")
        driver.execute_script("window.scrollTo(0, 0)")
        driver.save_screenshot(screenshot)

        # A broken font file: the error text, no download.
        broken = os.path.join(work, "broken.ttf")
        with open(DEJAVU, "rb") as f, open(broken, "wb") as out:
            out.write(f.read(3000))
        driver.find_element(By.ID, "font-file").send_keys(broken)
        time.sleep(0.5)
        convert(driver)
        wait_for(driver, lambda d: status(d) in (" Finish", " Convert Error"))
        text = driver.find_element(By.ID, "message-text").text
        if status(driver) != " Convert Error" or "Parameter Error:" not in text:
            failures.append(f"a broken font gave status {status(driver)!r} and messages {text!r}")
        if os.path.exists(os.path.join(downloads, "broken.zgly")):
            failures.append("a broken font was downloaded")

        # Cancel during a large conversion: no download.
        driver.find_element(By.ID, "font-file").send_keys(IPAG)
        set_checked(driver, "use-filter", False)
        time.sleep(0.5)
        before = set(os.listdir(downloads))
        convert(driver)
        # The reader's phase text and the bar arrive from the running worker.
        try:
            wait_for(driver, lambda d: status(d) == " Making Font Data..." and
                     d.execute_script("return document.getElementById('progress').value") > 0, 30)
        except Exception:
            failures.append(f"no progress was shown during the run (status {status(driver)!r})")
        convert(driver)  # the same button, now Cancel
        wait_for(driver, lambda d: status(d) in (" Canceled", " Finish", " Convert Error"))
        if status(driver) != " Canceled":
            failures.append(f"Cancel ended with status {status(driver)!r}")
        time.sleep(2)
        if set(os.listdir(downloads)) != before:
            failures.append("a cancelled conversion downloaded a file")
    finally:
        if driver:
            driver.quit()
        server.terminate()
        server.wait()
        shutil.rmtree(work, ignore_errors=True)
    for f in failures:
        print("browser_test: " + f)
    if failures:
        sys.exit(1)
    print(f"browser_test: convert, preview, error and cancel behave in Chromium; screenshot {screenshot}")


if __name__ == "__main__":
    main()
