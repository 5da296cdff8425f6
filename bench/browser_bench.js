'use strict';
// Opens one HTML report in Chromium (Debian's /usr/bin/chromium, driven by
// playwright-core from tests/browser/node_modules) and measures what a reader
// waits for, three fresh loads each, and prints the medians, one figure a
// line ("NAME VALUE"):
//   load_ms      navigation start to the end of the load event
//   elements     elements in the document once loaded
//   search_ms    a test case's name put into the search box, until the count
//                of shown test cases has changed and that frame is drawn
//   clear_ms     the search emptied again, the same way
//   filter_ms    the status filter STATUS unticked, until the count has
//                changed and is drawn
//   unfilter_ms  STATUS ticked again
//
// Usage: node bench/browser_bench.js REPORT.html SEARCH_TEXT STATUS
// Exits 77 when Chromium or the npm packages are missing.

const fs = require('fs');
const os = require('os');
const path = require('path');

const CHROMIUM = '/usr/bin/chromium';
const ARGS = ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
              '--disable-background-networking', '--disable-component-update', '--disable-sync'];

const [file, needle, status] = process.argv.slice(2);
if (!file || !needle || !status) {
  console.error('usage: node bench/browser_bench.js REPORT.html SEARCH_TEXT STATUS');
  process.exit(2);
}
let chromium;
try {
  ({chromium} = require(path.join(__dirname, '..', 'tests', 'browser', 'node_modules', 'playwright-core')));
} catch (e) {
  console.log('browser bench skipped: tests/browser/node_modules is missing (make browser-deps)');
  process.exit(77);
}
if (!fs.existsSync(CHROMIUM)) {
  console.log('browser bench skipped: ' + CHROMIUM + ' is missing (Debian package chromium)');
  process.exit(77);
}

// In the page: does ACTION, then waits until the shown count differs from
// what it said before and one more frame has been drawn; resolves to the
// milliseconds that took.
function timed(page, action, arg) {
  return page.evaluate(([action, arg]) => new Promise((resolve) => {
    const shown = document.getElementById('shown');
    const before = shown.textContent;
    const start = performance.now();
    if (action === 'search') {
      const q = document.getElementById('q');
      q.value = arg;
      q.dispatchEvent(new Event('input', {bubbles: true}));
    } else {
      document.querySelector('.filters input[value="' + arg + '"]').click();
    }
    const check = () => {
      if (shown.textContent === before) return requestAnimationFrame(check);
      requestAnimationFrame(() => setTimeout(() => resolve(performance.now() - start), 0));
    };
    requestAnimationFrame(check);
  }), [action, arg]);
}

const median = (values) => values.slice().sort((a, b) => a - b)[Math.floor(values.length / 2)];

(async () => {
  const url = 'file://' + path.resolve(file).split(path.sep).map(encodeURIComponent).join('/');
  const figures = {load_ms: [], elements: [], search_ms: [], clear_ms: [], filter_ms: [], unfilter_ms: []};
  for (let round = 0; round !== 3; round++) {
    const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-bench-chromium-'));
    const context = await chromium.launchPersistentContext(profile, {
      executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1280, height: 900},
    });
    try {
      const page = await context.newPage();
      await page.goto(url, {waitUntil: 'load', timeout: 120000});
      figures.load_ms.push(await page.evaluate(() => {
        const nav = performance.getEntriesByType('navigation')[0];
        return nav.loadEventEnd - nav.startTime;
      }));
      figures.elements.push(await page.evaluate(() => document.getElementsByTagName('*').length));
      figures.search_ms.push(await timed(page, 'search', needle));
      figures.clear_ms.push(await timed(page, 'search', ''));
      figures.filter_ms.push(await timed(page, 'filter', status));
      figures.unfilter_ms.push(await timed(page, 'filter', status));
    } finally {
      await context.close();
      fs.rmSync(profile, {recursive: true, force: true});
    }
  }
  for (const [name, values] of Object.entries(figures)) console.log(name + ' ' + Math.round(median(values)));
})().catch((e) => {
  console.error(e);
  process.exit(1);
});
