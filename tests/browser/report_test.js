'use strict';
// Opens the HTML reports of the bundled checkout example in Chromium, in all
// five languages, and checks what a reader sees and does: no console errors,
// translated labels, the counts, the status filters and their URL hash, the
// links, the search and keys, and the page with scripts off. Saves one
// screenshot per language (and a dark one) to OUTPUT_DIR/screenshots.
//
// Usage: node report_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR

const fs = require('fs');
const os = require('os');
const path = require('path');
const {spawnSync} = require('child_process');

const CHROMIUM = '/usr/bin/chromium';
const ARGS = ['--no-sandbox', '--disable-gpu', '--no-first-run', '--disable-background-networking',
              '--disable-component-update', '--disable-sync'];

function die(message) {
  console.error('browser tests: ' + message);
  process.exit(1);
}

const [qendor, sourceDir, outputDir] = process.argv.slice(2).map((a) => path.resolve(a));
if (!outputDir) die('usage: node report_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR');
if (!fs.existsSync(CHROMIUM)) {
  die(CHROMIUM + ' is missing: install the Debian package chromium (make setup does)');
}
let chromium;
try {
  ({chromium} = require(path.join(__dirname, 'node_modules', 'playwright-core')));
} catch (e) {
  die('tests/browser/node_modules is missing: run make browser-deps ' +
      '(npm ci --prefix tests/browser)\n' + e.message);
}
if (!fs.existsSync(qendor)) die(qendor + ' is missing: build qendor first');

// Per language: the -language value, the lang attribute and words the page
// must show.
const LANGUAGES = [
  {code: 'ENU', failed: 'Failed', lang: 'en', problems: 'Problems', passed: 'Passed', notTerminated: 'Not terminated',
   verdict: 'Result verification failed', search: 'Search'},
  {code: 'CHS', failed: '失败', lang: 'zh-CN', problems: '问题', passed: '通过', notTerminated: '未终止',
   verdict: '结果验证失败', search: '搜索'},
  {code: 'CHT', failed: '失敗', lang: 'zh-TW', problems: '問題', passed: '通過', notTerminated: '未終止',
   verdict: '結果驗證失敗', search: '搜尋'},
  {code: 'KOR', failed: '실패', lang: 'ko', problems: '문제', passed: '통과', notTerminated: '종료되지 않음',
   verdict: '결과 검증 실패', search: '검색'},
  {code: 'JPN', failed: '不合格', lang: 'ja', problems: '問題', passed: '合格', notTerminated: '未終了',
   verdict: '結果検証に失敗しました', search: '検索'},
];

let passed = 0;
let failed = 0;
function check(what, condition, detail) {
  if (condition) {
    passed++;
  } else {
    failed++;
    console.log('FAIL: ' + what + (detail === undefined ? '' : ' (' + JSON.stringify(detail) + ')'));
  }
}
function equal(what, expected, actual) {
  check(what + ': expected ' + JSON.stringify(expected), JSON.stringify(expected) === JSON.stringify(actual),
        actual);
}

// Reports the example into OUTPUT_DIR/reports/LANG, as examples/run-demo.sh
// does: verification files and images first, qendor run from the example's
// folder.
function makeReports(code) {
  const examples = path.join(sourceDir, 'examples');
  const out = path.join(outputDir, 'reports', code);
  fs.rmSync(out, {recursive: true, force: true});
  fs.mkdirSync(out, {recursive: true});
  for (const f of fs.readdirSync(path.join(examples, 'verification'))) {
    fs.copyFileSync(path.join(examples, 'verification', f), path.join(out, f));
  }
  for (const dir of ['spec_jpegs', 'result_jpegs']) {
    fs.cpSync(path.join(examples, 'images', dir), path.join(out, dir), {recursive: true});
  }
  const run = spawnSync(qendor, ['-infofile', 'shop.info', '-resultfile', 'results.log', '-outdirectory', out,
                                 '-tcontext', 'Shop.Checkout', '-language', code],
                        {cwd: examples, encoding: 'utf8', env: Object.assign({}, process.env, {TZ: 'UTC'})});
  equal(code + ': qendor exit status of the example', 10, run.status);
  if (!fs.existsSync(path.join(out, 'Checkout.html'))) die(code + ': no report was made: ' + run.stdout);
  return out;
}

function fileUrl(file) {
  return 'file://' + file.split(path.sep).map(encodeURIComponent).join('/');
}

async function withContext(options, body) {
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const context = await chromium.launchPersistentContext(profile, Object.assign({
    executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1200, height: 900},
  }, options));
  try {
    await body(context);
  } finally {
    await context.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
}

// The top of SELECTOR in the view once `wanted` holds for it, or after ten
// seconds. A jump is followed by layout (and with scripts on, by the page's
// own hash handler), which a loaded machine may draw late. Polled from here,
// since a page without scripts runs no waitForFunction timers.
async function settledTop(page, selector, wanted) {
  let top = await page.$eval(selector, (e) => e.getBoundingClientRect().top);
  for (let wait = 0; !wanted(top) && wait < 100; wait++) {
    await page.waitForTimeout(100);
    top = await page.$eval(selector, (e) => e.getBoundingClientRect().top);
  }
  return top;
}

function watch(page) {
  const errors = [];
  page.on('console', (m) => { if (m.type() === 'error') errors.push(m.text()); });
  page.on('pageerror', (e) => errors.push(e.message));
  return errors;
}

const visibleCases = (page) => page.$$eval('details.case', (all) =>
  all.filter((d) => !d.hidden && d.getClientRects().length).map((d) => d.id));

async function scripted(context, L, out, shots) {
  const page = await context.newPage();
  const errors = watch(page);
  const url = fileUrl(path.join(out, 'Checkout.html'));
  await page.goto(url);
  equal(L.code + ': lang', L.lang, await page.getAttribute('html', 'lang'));
  check(L.code + ': problems heading translated',
        (await page.textContent('#problems')).includes(L.problems + ' (4)'), await page.textContent('#problems'));
  check(L.code + ': status word translated', (await page.textContent('#controls')).includes(L.passed));
  check(L.code + ': search label translated', (await page.textContent('#controls')).includes(L.search));
  check(L.code + ': not terminated translated',
        (await page.textContent('#tc-CancelOrder summary')).includes(L.notTerminated));
  check(L.code + ': verification result translated',
        (await page.textContent('#tc-PayWithCoupon summary')).includes(L.verdict));
  const counts = await page.$$eval('td[data-count]', (tds) => tds.map((t) => t.getAttribute('data-count') + '=' + t.textContent));
  equal(L.code + ': counts', ['PASSED=5', 'FAILED=1', 'ERROR=1', 'NOT_TERMINATED=2', 'UNDEFINED=0'], counts);
  equal(L.code + ': exit status', '10', await page.textContent('#exit'));
  equal(L.code + ': assertions', '33', await page.textContent('#nasserts'));
  equal(L.code + ': filter counts', ['5', '1', '1', '2', '0'], await page.$$eval('.filter .n', (n) => n.map((x) => x.textContent)));
  check(L.code + ': controls shown', await page.isVisible('#controls'));
  equal(L.code + ': problems open, passed closed',
        ['PayWithCoupon', 'CancelOrder', 'ApplyVoucher', 'PaymentTimeout'],
        await page.$$eval('details.case[open]', (d) => d.map((x) => x.id.slice(3))));
  // Assertion rows show their status as word, symbol and colour, each row
  // by its own status (not by its test case's).
  equal(L.code + ': assertion status colours and symbols',
        ['rgb(15, 107, 58) \u2714', 'rgb(15, 107, 58) \u2714', 'rgb(176, 28, 12) \u2718', 'rgb(15, 107, 58) \u2714'],
        await page.$$eval('#tc-ApplyVoucher table.asserts tbody td:nth-child(2)', (tds) => tds.map((td) =>
          getComputedStyle(td).color + ' ' + getComputedStyle(td, '::before').content.charAt(1))));
  equal(L.code + ': assertion status words', [L.passed, L.passed, L.failed, L.passed],
        await page.$$eval('#tc-ApplyVoucher table.asserts tbody td:nth-child(2)', (tds) => tds.map((td) => td.textContent)));
  check(L.code + ': images load', await page.$eval('#tc-PlaceOrder img', (i) => { i.closest('details').open = true; return true; }));
  await page.waitForFunction(() => Array.from(document.images).every((i) => i.complete));
  equal(L.code + ': images have a size', [true, true],
        await page.$$eval('#tc-PlaceOrder img', (imgs) => imgs.map((i) => i.naturalWidth > 0)));
  await page.$eval('#tc-PlaceOrder', (d) => { d.open = false; });
  await page.screenshot({path: path.join(shots, 'Checkout-' + L.code + '.png')});

  // A link of the problems section jumps to its test case.
  await page.click('table.problems a[href="#tc-ApplyVoucher"]');
  equal(L.code + ': link sets the hash', '#tc-ApplyVoucher', await page.evaluate(() => location.hash));
  const nearTop = (t) => Math.abs(t) < 120;
  const top = await settledTop(page, '#tc-ApplyVoucher', nearTop);
  check(L.code + ': link scrolls to its target', nearTop(top), top);
  // and an assertion link to its row.
  await page.click('table.problems a[href="#tc-ApplyVoucher-a3"]');
  const rowInView = (t) => t > -5 && t < 200;
  const rowTop = await settledTop(page, '#tc-ApplyVoucher-a3', rowInView);
  check(L.code + ': assertion link scrolls to its row', rowInView(rowTop), rowTop);

  // The PASSED filter hides the passed test cases and says so in the hash.
  await page.click('.filter input[value="PASSED"]');
  equal(L.code + ': passed hidden', ['PayWithCoupon', 'CancelOrder', 'ApplyVoucher', 'PaymentTimeout'],
        (await visibleCases(page)).map((id) => id.slice(3)));
  equal(L.code + ': filter in the hash', '#hide=PASSED', await page.evaluate(() => location.hash));
  await page.reload();
  equal(L.code + ': hash restores the filter', false, await page.isChecked('.filter input[value="PASSED"]'));
  equal(L.code + ': hash restores hidden cases', 4, (await visibleCases(page)).length);
  await page.click('.filter input[value="PASSED"]');
  equal(L.code + ': all shown again', 9, (await visibleCases(page)).length);
  equal(L.code + ': hash cleared', '', await page.evaluate(() => location.hash));

  // Search, keys, expand and collapse.
  await page.keyboard.press('/');
  equal(L.code + ': / focuses the search', 'q', await page.evaluate(() => document.activeElement.id));
  await page.keyboard.type('gateway');
  await page.waitForFunction(() => location.hash.includes('q=gateway'));
  equal(L.code + ': search finds the message', ['tc-PaymentTimeout'], await visibleCases(page));
  await page.fill('#q', '');
  await page.waitForFunction(() => location.hash === '');
  equal(L.code + ': empty search shows all', 9, (await visibleCases(page)).length);
  await page.keyboard.press('Escape');
  await page.keyboard.press('j');
  await page.keyboard.press('j');
  equal(L.code + ': j goes to the next problem', 'tc-CancelOrder',
        await page.evaluate(() => document.querySelector('details.current').id));
  await page.keyboard.press('k');
  equal(L.code + ': k goes back', 'tc-PayWithCoupon',
        await page.evaluate(() => document.querySelector('details.current').id));
  await page.click('#expand');
  equal(L.code + ': expand all', 9, await page.$$eval('details.case[open]', (d) => d.length));
  await page.click('#collapse');
  equal(L.code + ': collapse all', 0, await page.$$eval('details.case[open]', (d) => d.length));
  await page.click('#theme');
  const dark = await page.evaluate(() => document.documentElement.getAttribute('data-theme'));
  check(L.code + ': theme toggle', dark === 'dark' || dark === 'light', dark);
  equal(L.code + ': toggle pressed state', dark === 'dark' ? 'true' : 'false', await page.getAttribute('#theme', 'aria-pressed'));
  await page.evaluate(() => localStorage.clear());

  // The test case reports open as cleanly.
  for (const name of ['CancelOrder', 'PlaceOrder', 'TotalPrice']) {
    await page.goto(fileUrl(path.join(out, name + '.html')));
    equal(L.code + ': ' + name + ' report has one test case', 1, (await visibleCases(page)).length);
  }
  equal(L.code + ': no console errors', [], errors);
  await page.close();
}

async function withoutScripts(context, L, out) {
  const page = await context.newPage();
  await page.goto(fileUrl(path.join(out, 'Checkout.html')));
  check(L.code + ' (no script): controls stay hidden', !(await page.isVisible('#controls')));
  check(L.code + ' (no script): problems visible', await page.isVisible('table.problems'));
  equal(L.code + ' (no script): all test cases there', 9, (await visibleCases(page)).length);
  equal(L.code + ' (no script): problems open', 4, await page.$$eval('details.case[open]', (d) => d.length));
  await page.click('summary:has(.name:text-is("PlaceOrder"))');
  check(L.code + ' (no script): a closed test case opens', await page.$eval('#tc-PlaceOrder', (d) => d.open));
  await page.click('table.problems a[href="#tc-PaymentTimeout"]');
  // The last test case cannot always reach the top: it must be in view and
  // the page scrolled. Blocks above it that are laid out only when they come
  // near the view may move it after the jump; when they moved it out of view,
  // the browser's own second jump (a person clicking again) lands on it.
  const inView = (top) => top >= -5 && top < 700;
  let top = await settledTop(page, '#tc-PaymentTimeout', inView);
  if (!inView(top)) {
    await page.click('table.problems a[href="#tc-PaymentTimeout"]');
    top = await settledTop(page, '#tc-PaymentTimeout', inView);
  }
  equal(L.code + ' (no script): link sets the address', '#tc-PaymentTimeout', await page.evaluate(() => location.hash));
  const scrolled = await page.evaluate(() => window.scrollY);
  check(L.code + ' (no script): links jump', inView(top) && scrolled > 0, [top, scrolled]);
  await page.close();
}

(async () => {
  const shots = path.join(outputDir, 'screenshots');
  fs.mkdirSync(shots, {recursive: true});
  const reports = LANGUAGES.map((L) => makeReports(L.code));
  await withContext({}, async (context) => {
    for (let i = 0; i !== LANGUAGES.length; i++) await scripted(context, LANGUAGES[i], reports[i], shots);
    const page = await context.newPage();
    await page.emulateMedia({colorScheme: 'dark'});
    await page.goto(fileUrl(path.join(reports[0], 'Checkout.html')));
    equal('dark: follows the system', 'rgb(13, 17, 23)',
          await page.evaluate(() => getComputedStyle(document.body).backgroundColor));
    await page.screenshot({path: path.join(shots, 'Checkout-ENU-dark.png')});
    await page.close();
  });
  await withContext({javaScriptEnabled: false}, async (context) => {
    for (let i = 0; i !== LANGUAGES.length; i++) await withoutScripts(context, LANGUAGES[i], reports[i]);
  });
  console.log(passed + ' passed, ' + failed + ' failed; screenshots in ' + shots);
  process.exit(failed === 0 ? 0 : 1);
})().catch((e) => {
  console.error(e);
  process.exit(1);
});
