"""axe-core, which checks a page for what keeps people from using it: fetched once for the tests alone."""
import hashlib
import io
import pathlib
import tarfile
import urllib.request

ADDRESS = "https://registry.npmjs.org/axe-core/-/axe-core-4.10.2.tgz"
SHA256 = "9ea2d2d6917da998122bdacfd3b473e31ead53f4b87146c716a12edf89158100"


def script(folder):
    """Its code, from the folder or from the registry."""
    kept = pathlib.Path(folder) / "axe-core-4.10.2.min.js"
    if not kept.exists():
        with urllib.request.urlopen(ADDRESS, timeout=60) as answer:
            archive = answer.read()
        if hashlib.sha256(archive).hexdigest() != SHA256:
            raise ValueError(f"{ADDRESS} is not what it was")
        with tarfile.open(fileobj=io.BytesIO(archive)) as files:
            kept.write_bytes(files.extractfile("package/axe.min.js").read())
    return kept.read_text(encoding="utf-8")


def violations(browser, code):
    """What it finds in the open page, each as a line."""
    browser.run(code)
    found = browser.driver.execute_async_script("""
        const done = arguments[arguments.length - 1];
        axe.run(document).then((results) => done(results.violations), (error) => done([{ id: String(error), nodes: [] }]));""")
    return [f"{each['id']}: {node['html'][:120]} {node.get('failureSummary', '')}"
            for each in found for node in each["nodes"] or [{"html": ""}]]
