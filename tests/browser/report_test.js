'use strict';
// Opens the HTML reports of the bundled checkout example in Chromium, in all
// five languages, and checks what a reader sees and does: no console errors,
// the verdict banner at the top, translated labels, the counts, the status
// filters with their count and their URL hash, links and keys that land below
// the sticky toolbar (measured once: the page does not move after a jump),
// the search, a test case report, the page at 400 px without sideways
// scrolling, axe-core's accessibility rules in both themes, and the page with
// scripts off. Saves screenshots to OUTPUT_DIR/screenshots.
//
// Usage: node report_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR
// (tests/browser/run.sh starts it, or reports it skipped when Chromium, node
// or the npm packages are missing).

const fs = require('fs');
const os = require('os');
const path = require('path');
const {spawnSync} = require('child_process');

const {CHROMIUM, ARGS, AXE, fileUrl} = require('./chromium');

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
if (!fs.existsSync(AXE)) die(AXE + ' is missing: run make browser-deps');
if (!fs.existsSync(qendor)) die(qendor + ' is missing: build qendor first');

// Per language: the -language value, the lang attribute and words the page
// must show: status words, the banner's line, what the verification says of
// the model path of a test case that did not terminate and of one whose path
// was not followed, and the filter count.
const LANGUAGES = [
  {code: 'ENU', lang: 'en', failed: 'Failed', error: 'Error', problems: 'Problems', passed: 'Passed',
   search: 'Search', banner: '1 of 9 test cases failed, 3 ended in error',
   mpNotTerminated: 'Model path: did not terminate', mpNotFollowed: 'Model path: not followed',
   assertionsFailed: 'Assertions: 1 failed', shown: '4 of 9 test cases shown'},
  {code: 'CHS', lang: 'zh-CN', failed: '失败', error: '错误', problems: '问题', passed: '通过',
   search: '搜索', banner: '9 个测试用例中 1 个失败，3 个以错误结束',
   mpNotTerminated: '模型路径：未终止', mpNotFollowed: '模型路径：未遵循',
   assertionsFailed: '断言：1 个失败', shown: '显示 9 个测试用例中的 4 个'},
  {code: 'CHT', lang: 'zh-TW', failed: '失敗', error: '錯誤', problems: '問題', passed: '通過',
   search: '搜尋', banner: '9 個測試案例中 1 個失敗，3 個以錯誤結束',
   mpNotTerminated: '模型路徑：未終止', mpNotFollowed: '模型路徑：未遵循',
   assertionsFailed: '斷言：1 個失敗', shown: '顯示 9 個測試案例中的 4 個'},
  {code: 'KOR', lang: 'ko', failed: '실패', error: '오류', problems: '문제', passed: '통과',
   search: '검색', banner: '테스트 케이스 9개 중 1개 실패, 3개 오류로 종료',
   mpNotTerminated: '모델 경로: 종료되지 않음', mpNotFollowed: '모델 경로: 따르지 않음',
   assertionsFailed: '어설션: 1개 실패', shown: '테스트 케이스 9개 중 4개 표시'},
  {code: 'JPN', lang: 'ja', failed: '不合格', error: 'エラー', problems: '問題', passed: '合格',
   search: '検索', banner: '9 件中 1 件のテストケースが不合格、3 件がエラーで終了',
   mpNotTerminated: 'モデルパス：終了せず', mpNotFollowed: 'モデルパス：沿っていない',
   assertionsFailed: 'アサーション：1 件が不合格', shown: '9 件中 4 件のテストケースを表示'},
];

const {check, equal, finish} = require('./checks');

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

// Where a jump landed, measured once, right after it: the target's top and
// the bottom of the sticky toolbar (0 with scripts off, when it is hidden).
// A target lands 10 px below the toolbar; nothing above it may move later.
function landing(page, selector) {
  return page.$eval(selector, (e) => {
    const bar = document.getElementById('controls');
    return {top: Math.round(e.getBoundingClientRect().top),
            below: bar && !bar.hidden ? Math.round(bar.getBoundingClientRect().bottom) : 0,
            bottom: Math.round(window.scrollY + window.innerHeight) >= document.documentElement.scrollHeight - 1};
  });
}
// A target near the end of the page cannot reach the top: the page is then
// scrolled to its end, with the target below the toolbar and in view.
function landsBelowBar(what, spot) {
  check(what + ' (lands just below the toolbar)', spot.top >= spot.below &&
        (spot.top <= spot.below + 14 || (spot.bottom && spot.top < 700)), spot);
}

function watch(page) {
  const errors = [];
  page.on('console', (m) => { if (m.type() === 'error') errors.push(m.text()); });
  page.on('pageerror', (e) => errors.push(e.message));
  return errors;
}

const visibleCases = (page) => page.$$eval('details.case', (all) =>
  all.filter((d) => !d.hidden && d.getClientRects().length).map((d) => d.id));
const visibleProblems = (page) => page.$$eval('table.problems tbody tr', (rows) =>
  rows.filter((r) => r.getClientRects().length).map((r) => r.getAttribute('data-case')));

// axe-core's rules on the page as it is shown: the violations, each with the
// first elements it names.
async function axeViolations(page) {
  await page.addScriptTag({path: AXE});
  return page.evaluate(async () => (await window.axe.run(document)).violations.map((v) =>
    v.id + ': ' + v.nodes.slice(0, 3).map((n) => n.target.join(' ')).join(', ')));
}

// The page never scrolls sideways; every table scrolls inside its own
// container, which fits the view.
async function fitsWidth(page, what) {
  const widths = await page.evaluate(() => ({page: document.documentElement.scrollWidth, view: window.innerWidth}));
  check(what + ': no sideways scrolling', widths.page <= widths.view, widths);
  const loose = await page.$$eval('table', (tables) => tables.filter((t) => t.getClientRects().length).filter((t) => {
    const box = t.closest('.scroll');
    return !box || box.getBoundingClientRect().right > window.innerWidth + 0.5;
  }).map((t) => t.className || t.querySelector('caption').textContent));
  equal(what + ': every table in a container that fits', [], loose);
}

async function scripted(context, L, out, shots) {
  const page = await context.newPage();
  const errors = watch(page);
  const url = fileUrl(path.join(out, 'Checkout.html'));
  await page.goto(url);
  equal(L.code + ': lang', L.lang, await page.getAttribute('html', 'lang'));

  // The verdict comes first.
  const banner = await page.$eval('#banner', (b) => Math.round(b.getBoundingClientRect().bottom));
  check(L.code + ': verdict banner at the top', banner < 260, banner);
  equal(L.code + ': banner line', L.banner, await page.textContent('#banner-line'));
  check(L.code + ': banner status word', (await page.textContent('#verdict')).includes(L.failed));
  equal(L.code + ': exit status', '10', await page.textContent('#exit'));
  equal(L.code + ': accessibility (axe-core)', [], await axeViolations(page));

  check(L.code + ': problems heading translated',
        (await page.textContent('#problems')).includes(L.problems + ' (4)'), await page.textContent('#problems'));
  check(L.code + ': status word translated', (await page.textContent('#controls')).includes(L.passed));
  check(L.code + ': search label translated', (await page.textContent('#controls')).includes(L.search));
  // The document's status word; why, is the verification's to say.
  const cancel = await page.textContent('#tc-CancelOrder summary');
  check(L.code + ': a test case that did not terminate shows its status', cancel.includes(L.error), cancel);
  check(L.code + ': and the model path says why', cancel.includes(L.mpNotTerminated), cancel);
  check(L.code + ': model path not followed',
        (await page.textContent('#tc-PayWithCoupon summary')).includes(L.mpNotFollowed));
  check(L.code + ': assertions named apart',
        (await page.textContent('#tc-ApplyVoucher summary')).includes(L.assertionsFailed));
  if (L.lang !== 'en') {
    // No English punctuation inside a translated sentence, and captions that
    // keep their words whole (the counts' caption is one word in Chinese and
    // Japanese).
    const summaries = await page.$$eval('details.case > summary', (all) => all.map((x) => x.textContent).join('|'));
    check(L.code + ': no English comma in the summaries', !/\S, \S/.test(summaries) || L.code === 'KOR', summaries);
    const caption = await page.$eval('table.counts caption', (c) => {
      const range = document.createRange();
      range.selectNodeContents(c);
      return range.getClientRects().length;
    });
    equal(L.code + ': counts caption on one line', 1, caption);
  }
  equal(L.code + ': test case names are headings', 9, await page.$$eval('details.case > summary .name', (h) => h.length));
  const counts = await page.$$eval('td[data-count]', (tds) => tds.map((t) => t.getAttribute('data-count') + '=' + t.textContent));
  equal(L.code + ': counts', ['PASSED=5', 'FAILED=1', 'ERROR=3', 'UNDEFINED=0'], counts);
  equal(L.code + ': assertions', '33', await page.textContent('#nasserts'));
  equal(L.code + ': filter counts', ['5', '1', '3', '0'], await page.$$eval('.filter .n', (n) => n.map((x) => x.textContent)));
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
  equal(L.code + ': in and out numbers only', ['', '1 / 2', '3 / 4', '5 / 6'],
        await page.$$eval('#tc-ApplyVoucher table.asserts tbody td:nth-child(5)', (tds) => tds.map((td) => td.textContent)));
  // A directory breaks only after a separator, never inside a name.
  equal(L.code + ': directory names kept whole', [1, 1, 1, 1],
        await page.$$eval('#tc-ApplyVoucher table.asserts tbody td:nth-child(8)', (tds) => tds.map((td) => {
          const text = td.firstChild;
          const range = document.createRange();
          range.setStart(text, text.data.lastIndexOf('/') + 1);
          range.setEnd(text, text.data.length);
          return range.getClientRects().length;
        })));
  equal(L.code + ': GUID without its prefix', '4d3a1c6e-8f2b-4e7a-b5c9-1a2b3c4d5e6f',
        await page.textContent('#tc-ApplyVoucher-a3 td:nth-child(7)'));
  check(L.code + ': images load', await page.$eval('#tc-PlaceOrder img', (i) => { i.closest('details').open = true; return true; }));
  await page.waitForFunction(() => Array.from(document.images).every((i) => i.complete));
  equal(L.code + ': images have a size', [true, true],
        await page.$$eval('#tc-PlaceOrder img', (imgs) => imgs.map((i) => i.naturalWidth > 0)));
  check(L.code + ': images described', (await page.$$eval('#tc-PlaceOrder img', (imgs) => imgs.map((i) => i.alt)))
    .every((alt) => alt.includes('PlaceOrder') && alt.length > 20));
  await page.$eval('#tc-PlaceOrder', (d) => { d.open = false; });
  await page.screenshot({path: path.join(shots, 'Checkout-' + L.code + '.png')});

  // The banner links the first problem; links land below the toolbar, marked.
  await page.click('#first-problem');
  equal(L.code + ': banner link sets the hash', '#tc-PayWithCoupon', await page.evaluate(() => location.hash));
  landsBelowBar(L.code + ': banner link', await landing(page, '#tc-PayWithCoupon'));
  equal(L.code + ': the target is marked', 'solid', await page.$eval('#tc-PayWithCoupon', (e) => getComputedStyle(e).outlineStyle));
  await page.click('table.problems a[href="#tc-ApplyVoucher"]');
  equal(L.code + ': link sets the hash', '#tc-ApplyVoucher', await page.evaluate(() => location.hash));
  landsBelowBar(L.code + ': link to a test case', await landing(page, '#tc-ApplyVoucher'));
  await page.click('table.problems a[href="#tc-ApplyVoucher-a3"]');
  landsBelowBar(L.code + ': link to an assertion row', await landing(page, '#tc-ApplyVoucher-a3'));
  equal(L.code + ': the row is marked', 'rgb(255, 241, 166)',
        await page.$eval('#tc-ApplyVoucher-a3 td', (e) => getComputedStyle(e).backgroundColor));

  // The PASSED filter hides the passed test cases, says how many are left
  // and writes itself into the hash.
  equal(L.code + ': the count is announced', 'polite', await page.getAttribute('#shown', 'aria-live'));
  await page.click('.filter input[value="PASSED"]');
  equal(L.code + ': passed hidden', ['PayWithCoupon', 'CancelOrder', 'ApplyVoucher', 'PaymentTimeout'],
        (await visibleCases(page)).map((id) => id.slice(3)));
  equal(L.code + ': filter count', L.shown, await page.textContent('#shown'));
  equal(L.code + ': filter in the hash', '#hide=PASSED', await page.evaluate(() => location.hash));
  await page.reload();
  equal(L.code + ': hash restores the filter', false, await page.isChecked('.filter input[value="PASSED"]'));
  equal(L.code + ': hash restores hidden cases', 4, (await visibleCases(page)).length);
  equal(L.code + ': hash restores the count', L.shown, await page.textContent('#shown'));
  await page.click('.filter input[value="PASSED"]');
  equal(L.code + ': all shown again', 9, (await visibleCases(page)).length);
  equal(L.code + ': hash cleared', '', await page.evaluate(() => location.hash));
  // The problems list follows the filter.
  await page.click('.filter input[value="ERROR"]');
  equal(L.code + ': problems follow the filter', ['tc-ApplyVoucher'], await visibleProblems(page));
  await page.click('.filter input[value="ERROR"]');
  equal(L.code + ': all problems again', 4, (await visibleProblems(page)).length);

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
  landsBelowBar(L.code + ': j', await landing(page, '#tc-CancelOrder'));
  await page.keyboard.press('k');
  equal(L.code + ': k goes back', 'tc-PayWithCoupon',
        await page.evaluate(() => document.querySelector('details.current').id));
  landsBelowBar(L.code + ': k', await landing(page, '#tc-PayWithCoupon'));
  await page.click('#expand');
  equal(L.code + ': expand all', 9, await page.$$eval('details.case[open]', (d) => d.length));
  await page.click('#collapse');
  equal(L.code + ': collapse all', 0, await page.$$eval('details.case[open]', (d) => d.length));
  await page.click('#theme');
  const dark = await page.evaluate(() => document.documentElement.getAttribute('data-theme'));
  check(L.code + ': theme toggle', dark === 'dark' || dark === 'light', dark);
  equal(L.code + ': toggle pressed state', dark === 'dark' ? 'true' : 'false', await page.getAttribute('#theme', 'aria-pressed'));
  await page.evaluate(() => localStorage.clear());

  // A test case report leads with its verdict and its first failing
  // assertion, and has nothing that only a context needs.
  await page.goto(fileUrl(path.join(out, 'ApplyVoucher.html')));
  equal(L.code + ': test case report exit status', '10', await page.textContent('#exit'));
  check(L.code + ': test case report banner', (await page.textContent('#banner-line')).includes(L.assertionsFailed));
  equal(L.code + ': test case report has no filters, counts or problems', [0, 0, 0],
        await page.evaluate(() => ['.filters', 'td[data-count]', '#problems'].map((s) => document.querySelectorAll(s).length)));
  const first = await page.$eval('#first-problem', (a) => [a.getAttribute('href'), Math.round(a.getBoundingClientRect().top)]);
  equal(L.code + ': the first failing assertion is linked', '#tc-ApplyVoucher-a3', first[0]);
  check(L.code + ': near the top', first[1] < 260, first[1]);
  await page.click('#first-problem');
  landsBelowBar(L.code + ': test case report link', await landing(page, '#tc-ApplyVoucher-a3'));
  if (L.code === 'ENU') {
    equal('test case report: accessibility (axe-core)', [], await axeViolations(page));
    await page.screenshot({path: path.join(shots, 'ApplyVoucher-ENU.png')});
  }
  await page.goto(fileUrl(path.join(out, 'CancelOrder.html')));
  equal(L.code + ': a test case that did not terminate ends the run with 13', '13', await page.textContent('#exit'));
  check(L.code + ': its status word is the document\'s', (await page.textContent('#verdict')).includes(L.error));
  for (const name of ['CancelOrder', 'PlaceOrder', 'TotalPrice']) {
    await page.goto(fileUrl(path.join(out, name + '.html')));
    equal(L.code + ': ' + name + ' report has one test case', 1, (await visibleCases(page)).length);
    equal(L.code + ': ' + name + ' report shows it open', 1, await page.$$eval('details.case[open]', (d) => d.length));
  }
  equal(L.code + ': no console errors', [], errors);
  await page.close();
}

// The page on a phone: nothing scrolls sideways, the verdict is at the top,
// a link lands below the toolbar (which is taller there).
async function narrow(context, L, out, shots) {
  const page = await context.newPage();
  await page.setViewportSize({width: 400, height: 800});
  await page.goto(fileUrl(path.join(out, 'Checkout.html')));
  const what = L.code + ' at 400 px';
  await fitsWidth(page, what);
  const bar = await page.$eval('#controls', (c) => c.getBoundingClientRect().height);
  check(what + ': the toolbar takes at most a quarter of the screen', bar <= 200, bar);
  const banner = await page.$eval('#banner', (b) => Math.round(b.getBoundingClientRect().top));
  check(what + ': verdict banner at the top', banner < 160, banner);
  await page.screenshot({path: path.join(shots, 'Checkout-' + L.code + '-400.png')});
  await page.click('table.problems a[href="#tc-ApplyVoucher"]');
  landsBelowBar(what + ': link', await landing(page, '#tc-ApplyVoucher'));
  await page.click('#expand');
  await fitsWidth(page, what + ', all open');
  equal(what + ': accessibility (axe-core)', [], await axeViolations(page));
  await page.goto(fileUrl(path.join(out, 'ApplyVoucher.html')));
  await fitsWidth(page, what + ', test case report');
  await page.close();
}

// A generated context of 400 test cases, most of them laid out only when they
// come near the view: jumps far down the page land where they point and stay
// there, measured once right after the jump.
function makeLargeReport() {
  const out = path.join(outputDir, 'reports', 'large');
  fs.rmSync(out, {recursive: true, force: true});
  fs.mkdirSync(out, {recursive: true});
  const xml = spawnSync('sh', [path.join(sourceDir, 'tests', 'generate_context.sh'), '9600', '400'],
                        {encoding: 'utf8', maxBuffer: 64 << 20});
  if (xml.status !== 0) die('generate_context.sh failed: ' + xml.stderr);
  fs.writeFileSync(path.join(out, 'Big.xml'), xml.stdout);
  const run = spawnSync('xsltproc', ['-o', path.join(out, 'Big.html'), path.join(sourceDir, 'stylesheets', 'TestResult2ENU.xslt'),
                                     path.join(out, 'Big.xml')], {encoding: 'utf8'});
  if (run.status !== 0) die('xsltproc failed on the large context: ' + run.stderr);
  return path.join(out, 'Big.html');
}

async function largeJumps(context, file, what) {
  const page = await context.newPage();
  await page.goto(fileUrl(file));
  for (const id of ['tc-Case193', 'tc-Case3', 'tc-Case393', 'tc-Case203-a12', 'tc-Case107']) {
    await page.click('table.problems a[href="#' + id.replace(/-a\d+$/, '') + '"]');
    if (id.includes('-a')) await page.evaluate((h) => { location.hash = h; }, id);
    landsBelowBar(what + ': jump to ' + id, await landing(page, '#' + id));
  }
  await page.close();
}

// Deep links opened in a fresh page: the target stands just below the
// toolbar once the page is loaded and has drawn two more frames, every time.
async function deepLinks(out) {
  for (const width of [400, 1280]) {
    for (const scheme of ['light', 'dark']) {
      await withContext({viewport: {width, height: width === 400 ? 800 : 900}, colorScheme: scheme}, async (context) => {
        for (const [file, id] of [['Checkout.html', 'tc-ApplyVoucher'], ['Checkout.html', 'tc-ApplyVoucher-a3'],
                                  ['Checkout.html', 'tc-PaymentTimeout'], ['ApplyVoucher.html', 'tc-ApplyVoucher-a3']]) {
          const spots = [];
          for (let load = 0; load !== 12; load++) {
            const page = await context.newPage();
            await page.goto(fileUrl(path.join(out, file)) + '#' + id);
            await page.evaluate(() => new Promise((r) => requestAnimationFrame(() => requestAnimationFrame(r))));
            spots.push(await landing(page, '#' + id));
            await page.close();
          }
          const landed = spots.filter((spot) => spot.top >= spot.below &&
                                       (spot.top <= spot.below + 14 || (spot.bottom && spot.top < 700)));
          equal(file + '#' + id + ' at ' + width + ' px, ' + scheme + ': fresh loads that land below the toolbar',
                12, landed.length);
        }
      });
    }
  }
}

// Every focus stop, Tab from the top to the end and Shift+Tab back, stays
// clear of the sticky toolbar (or is in it).
async function focusStops(context, out, width) {
  const page = await context.newPage();
  await page.setViewportSize({width, height: 800});
  await page.goto(fileUrl(path.join(out, 'Checkout.html')));
  const hidden = [];
  let stops = 0;
  for (const key of ['Tab', 'Shift+Tab']) {
    const seen = new Set();
    for (let n = 0; n !== 400; n++) {
      await page.keyboard.press(key);
      const stop = await page.evaluate(() => {
        const e = document.activeElement;
        if (!e || e === document.body) return null;
        const bar = document.getElementById('controls').getBoundingClientRect();
        const r = e.getBoundingClientRect();
        const name = e.tagName + (e.id ? '#' + e.id : '') + ' ' + (e.textContent || '').trim().slice(0, 30);
        return {name, path: Array.from(document.querySelectorAll('*')).indexOf(e),
                under: !e.closest('#controls') && r.top < bar.bottom - 1 && r.bottom > bar.top + 1};
      });
      if (!stop) {
        if (n) break;
        continue;
      }
      if (seen.has(stop.path)) break;
      seen.add(stop.path);
      stops++;
      if (stop.under) hidden.push(key + ': ' + stop.name);
    }
  }
  check(width + ' px: tabbing meets the focus stops', stops > 40, stops);
  equal(width + ' px: no focus stop under the toolbar', [], hidden);
  await page.close();
}

// Printed with a dark system scheme: the light palette on white paper.
async function printedDark(context, out) {
  const page = await context.newPage();
  await page.emulateMedia({media: 'print', colorScheme: 'dark'});
  await page.goto(fileUrl(path.join(out, 'Checkout.html')));
  equal('print, dark scheme: page, card and text', ['rgb(255, 255, 255)', 'rgb(255, 255, 255)', 'rgb(0, 0, 0)'],
        await page.evaluate(() => [getComputedStyle(document.body).backgroundColor,
                                   getComputedStyle(document.getElementById('tc-ApplyVoucher')).backgroundColor,
                                   getComputedStyle(document.body).color]));
  equal('print, dark scheme: a failed badge in the light palette', 'rgb(176, 28, 12)',
        await page.$eval('#tc-ApplyVoucher .badge', (b) => getComputedStyle(b).color));
  equal('print, dark scheme: every test case printed whole', 9,
        await page.$$eval('details.case .body', (b) => b.filter((x) => x.getClientRects().length).length));
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
  await page.click('table.problems a[href="#tc-ApplyVoucher"]');
  equal(L.code + ' (no script): link sets the address', '#tc-ApplyVoucher', await page.evaluate(() => location.hash));
  landsBelowBar(L.code + ' (no script): link', await landing(page, '#tc-ApplyVoucher'));
  await page.click('table.problems a[href="#tc-PaymentTimeout"]');
  landsBelowBar(L.code + ' (no script): link to the last problem', await landing(page, '#tc-PaymentTimeout'));
  await page.close();
}

(async () => {
  const shots = path.join(outputDir, 'screenshots');
  fs.mkdirSync(shots, {recursive: true});
  const reports = LANGUAGES.map((L) => makeReports(L.code));
  await withContext({}, async (context) => {
    for (let i = 0; i !== LANGUAGES.length; i++) await scripted(context, LANGUAGES[i], reports[i], shots);
    for (const i of [0, 4]) await narrow(context, LANGUAGES[i], reports[i], shots);
    for (const i of [0, 4]) {
      const page = await context.newPage();
      await page.emulateMedia({colorScheme: 'dark'});
      await page.goto(fileUrl(path.join(reports[i], 'Checkout.html')));
      equal('dark: follows the system', 'rgb(13, 17, 23)',
            await page.evaluate(() => getComputedStyle(document.body).backgroundColor));
      equal(LANGUAGES[i].code + ' dark: accessibility (axe-core)', [], await axeViolations(page));
      await page.click('table.problems a[href="#tc-ApplyVoucher-a3"]');
      equal(LANGUAGES[i].code + ' dark: accessibility of a marked row', [], await axeViolations(page));
      if (i === 0) await page.screenshot({path: path.join(shots, 'Checkout-ENU-dark.png')});
      await page.close();
    }
  });
  await withContext({}, async (context) => {
    for (const width of [1280, 400]) await focusStops(context, reports[0], width);
    await printedDark(context, reports[0]);
  });
  await deepLinks(reports[0]);
  const large = makeLargeReport();
  await withContext({}, (context) => largeJumps(context, large, 'large context'));
  await withContext({javaScriptEnabled: false}, async (context) => {
    for (let i = 0; i !== LANGUAGES.length; i++) await withoutScripts(context, LANGUAGES[i], reports[i]);
    await largeJumps(context, large, 'large context (no script)');
  });
  finish(shots);
})().catch((e) => {
  console.error(e);
  process.exit(1);
});
