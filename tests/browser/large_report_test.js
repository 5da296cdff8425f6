'use strict';
// Opens the HTML report of a generated context of 4,000 test cases with
// 96,000 assertions in Chromium and checks what keeps such a page quick
// without hiding anything: the number of elements, every test case and
// assertion in the document (closed blocks hold their assertions as lines of
// text, which the browser's find and print reach), the first ten problems
// open, the problems grouped, search and status filters that reach every
// test case, a closed block that becomes a table when opened, deep links
// into closed blocks, the page at 400 px in dark mode with every block open,
// print in the light palette, and the page with scripts off. How fast it is
// lies with `make bench` (bench/browser_bench.js), not here.
//
// Usage: node large_report_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR

const fs = require('fs');
const os = require('os');
const path = require('path');
const {spawnSync} = require('child_process');

const {CHROMIUM, ARGS, fileUrl} = require('./chromium');

function die(message) {
  console.error('large report browser test: ' + message);
  process.exit(1);
}

const [, sourceDir, outputDir] = process.argv.slice(2).map((a) => path.resolve(a));
if (!outputDir) die('usage: node large_report_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR');
let chromium;
try {
  ({chromium} = require(path.join(__dirname, 'node_modules', 'playwright-core')));
} catch (e) {
  die('tests/browser/node_modules is missing: run make browser-deps\n' + e.message);
}
const {check, equal, finish} = require('./checks');

// 4,000 test cases of 24 assertions (tests/generate_context.sh: every tenth
// failed, every 25th not terminated), rendered with the English stylesheet.
const CASES = 4000;
function makeReport() {
  const out = path.join(outputDir, 'reports', 'large4k');
  fs.rmSync(out, {recursive: true, force: true});
  fs.mkdirSync(out, {recursive: true});
  const xml = spawnSync('sh', [path.join(sourceDir, 'tests', 'generate_context.sh'), String(CASES * 24), String(CASES)],
                        {encoding: 'utf8', maxBuffer: 256 << 20});
  if (xml.status !== 0) die('generate_context.sh failed: ' + xml.stderr);
  fs.writeFileSync(path.join(out, 'Big.xml'), xml.stdout);
  const run = spawnSync('xsltproc', ['-o', path.join(out, 'Big.html'), path.join(sourceDir, 'stylesheets', 'TestResult2ENU.xslt'),
                                     path.join(out, 'Big.xml')], {encoding: 'utf8'});
  if (run.status !== 0) die('xsltproc failed: ' + run.stderr);
  return path.join(out, 'Big.html');
}

// What generate_context.sh makes: the statuses of test case c.
const statusOf = (c) => (c % 25 === 7 ? 'ERROR' : c % 10 === 3 ? 'FAILED' : 'PASSED');
const problems = [];
for (let c = 1; c <= CASES; c++) if (statusOf(c) !== 'PASSED') problems.push('tc-Case' + c);


async function withContext(options, body) {
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const context = await chromium.launchPersistentContext(profile, Object.assign({
    executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1280, height: 900},
  }, options));
  try {
    await body(context);
  } finally {
    await context.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
}

// The target's top and the toolbar's bottom, once the page has drawn two
// frames after the load
// (A page without scripts runs no frame callbacks: it is measured at once.)
async function landing(page, id, scripts = true) {
  if (scripts) await page.evaluate(() => new Promise((r) => requestAnimationFrame(() => requestAnimationFrame(r))));
  return page.evaluate((id) => {
    const bar = document.getElementById('controls');
    return {top: Math.round(document.getElementById(id).getBoundingClientRect().top),
            below: bar && !bar.hidden ? Math.round(bar.getBoundingClientRect().bottom) : 0};
  }, id);
}
function landsBelowBar(what, spot) {
  check(what + ' (lands just below the toolbar)', spot.top >= spot.below && spot.top <= spot.below + 14, spot);
}

const visibleCount = (page) => page.$$eval('details.case', (all) => all.filter((d) => d.getClientRects().length).length);

async function scripted(context, file, shots) {
  const page = await context.newPage();
  const errors = [];
  page.on('pageerror', (e) => errors.push(e.message));
  page.on('console', (m) => { if (m.type() === 'error') errors.push(m.text()); });
  await page.goto(fileUrl(file));
  const elements = await page.evaluate(() => document.getElementsByTagName('*').length);
  check('elements at load at most 150,000', elements <= 150000, elements);
  console.log('elements at load: ' + elements);
  equal('every test case is a block', CASES, await page.$$eval('details.case', (d) => d.length));
  equal('the first ten problems open', problems.slice(0, 10),
        await page.$$eval('details.case[open]', (d) => d.map((x) => x.id)));
  // Every assertion is in the document: 24 lines of a closed block.
  const lines = await page.$eval('#tc-Case2221 pre.lite-rows', (p) => p.textContent.split('\n'));
  equal('a closed block has its assertions as lines', 25, lines.length);
  equal('a line holds the whole row',
        '24\tPassed\tLifeline4 / msg24\tStep 24 of case 2221\t24 / 25\tinternal\t1b4e28ba-2fa1-11d2-883f-000000053304\t' +
        'src/bench\tcase2221.cpp:24', lines[24]);
  const all = await page.evaluate(() => document.body.textContent);
  check('every test case name is in the document', ['Case1', 'Case1999', 'Case4000'].every((n) => all.includes(n)));
  check('the last assertion is in the document', all.includes('value_24 == expected_24'));

  // Problems grouped: each group links its test cases, all problems reached.
  const groups = await page.$$eval('table.problems tbody tr', (rows) => rows.map((r) => r.getAttribute('data-status')));
  equal('problems grouped by status and verdict', ['FAILED', 'ERROR'], groups);
  equal('every problem linked once', problems,
        (await page.$$eval('table.problems tbody th a', (a) => a.map((x) => x.getAttribute('href').slice(1)))).sort(
          (a, b) => problems.indexOf(a) - problems.indexOf(b)));

  // Search and filters reach every test case; the count says so.
  await page.fill('#q', 'Case3999');
  await page.waitForFunction(() => document.getElementById('shown').textContent === '1 of 4000 test cases shown');
  equal('search finds the one test case', 1, await visibleCount(page));
  await page.fill('#q', '');
  await page.waitForFunction((n) => document.querySelectorAll('details.case:not([hidden])').length === n, CASES);
  equal('an empty search shows all again', CASES, await visibleCount(page));
  await page.click('.filter input[value="PASSED"]');
  await page.waitForFunction((n) => document.getElementById('shown').textContent === n + ' of 4000 test cases shown',
                             problems.length);
  equal('unticking Passed leaves the problems', problems.length, await visibleCount(page));
  await page.click('.filter input[value="ERROR"]');
  equal('the grouped problems follow the filter', ['FAILED'],
        await page.$$eval('table.problems tbody tr', (rows) => rows.filter((r) => r.getClientRects().length)
          .map((r) => r.getAttribute('data-status'))));
  await page.click('.filter input[value="ERROR"]');
  await page.click('.filter input[value="PASSED"]');
  await page.waitForFunction((n) => document.querySelectorAll('details.case:not([hidden])').length === n, CASES);
  await page.screenshot({path: path.join(shots, 'Large-1280.png')});

  // A closed block opened by hand becomes the table, with its anchors.
  await page.click('#tc-Case2221 > summary');
  equal('the opened block has its table', 24, await page.$$eval('#tc-Case2221 table.asserts tbody tr[id]', (r) => r.length));
  equal('rows keep their anchors', 'tc-Case2221-a24',
        await page.$eval('#tc-Case2221 table.asserts tbody tr:last-child', (r) => r.id));
  equal('cells as in a full block', ['Passed', 'Lifeline4 / msg24', 'case2221.cpp:24'],
        await page.$$eval('#tc-Case2221-a24 td', (td) => [td[0].textContent, td[1].textContent, td[7].textContent]));
  equal('no script errors', [], errors);
  await page.close();

  // Deep links into closed blocks land below the toolbar on a fresh load.
  for (const id of ['tc-Case3001', 'tc-Case3013-a7', 'tc-Case1503']) {
    const p = await context.newPage();
    await p.goto(fileUrl(file) + '#' + id);
    landsBelowBar('fresh load of #' + id, await landing(p, id));
    check('#' + id + ': its block is open', await p.$eval('#' + id, (e) => e.closest('details').open));
    equal('#' + id + ': its block shows the table', 24,
          await p.$eval('#' + id, (e) => e.closest('details').querySelectorAll('table.asserts tbody tr').length));
    await p.close();
  }
}

// A phone in dark mode: every block open, nothing scrolls sideways, the
// toolbar takes at most a quarter of the screen.
async function narrowDark(context, file, shots) {
  const page = await context.newPage();
  await page.emulateMedia({colorScheme: 'dark'});
  await page.goto(fileUrl(file));
  const bar = await page.$eval('#controls', (c) => c.getBoundingClientRect().height);
  check('400 px: the toolbar takes at most a quarter of the screen', bar <= 200, bar);
  await page.screenshot({path: path.join(shots, 'Large-400-dark.png')});
  for (const id of ['tc-Case3001', 'tc-Case3013-a7']) {
    for (let load = 0; load !== 3; load++) {
      const p = await context.newPage();
      await p.emulateMedia({colorScheme: 'dark'});
      await p.goto(fileUrl(file) + '#' + id);
      landsBelowBar('400 px, dark, fresh load ' + (load + 1) + ' of #' + id, await landing(p, id));
      await p.close();
    }
  }
  await page.click('#expand');
  await page.waitForFunction((n) => document.querySelectorAll('details.case[open]').length === n, CASES);
  const widths = await page.evaluate(() => ({page: document.documentElement.scrollWidth, view: window.innerWidth}));
  check('400 px, every block open: no sideways scrolling', widths.page <= widths.view, widths);
  await page.close();
}

async function printed(context, file) {
  const page = await context.newPage();
  await page.emulateMedia({media: 'print', colorScheme: 'dark'});
  await page.goto(fileUrl(file));
  equal('print in a dark scheme: light cards', ['rgb(255, 255, 255)', 'rgb(0, 0, 0)'],
        await page.$eval('#tc-Case1', (c) => [getComputedStyle(c).backgroundColor, getComputedStyle(document.body).color]));
  check('print: a closed block prints its assertions', await page.$eval('#tc-Case2221 pre.lite-rows',
                                                                          (p) => p.getClientRects().length > 0));
  await page.close();
}

async function withoutScripts(context, file) {
  const page = await context.newPage();
  await page.goto(fileUrl(file) + '#tc-Case3001');
  check('no script: controls stay hidden', !(await page.isVisible('#controls')));
  equal('no script: every test case there', CASES, await visibleCount(page));
  equal('no script: the first ten problems open', 10, await page.$$eval('details.case[open]', (d) => d.length));
  landsBelowBar('no script: a link to a closed block', await landing(page, 'tc-Case3001', false));
  await page.close();
}

(async () => {
  const shots = path.join(outputDir, 'screenshots');
  fs.mkdirSync(shots, {recursive: true});
  const file = makeReport();
  await withContext({}, (context) => scripted(context, file, shots));
  await withContext({viewport: {width: 400, height: 800}}, (context) => narrowDark(context, file, shots));
  await withContext({}, (context) => printed(context, file));
  await withContext({javaScriptEnabled: false}, (context) => withoutScripts(context, file));
  finish(shots);
})().catch((e) => die(e.stack || String(e)));
