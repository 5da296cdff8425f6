'use strict';
// Opens the index page of an output folder (qendor -index) in Chromium: runs
// of several contexts into one folder, one document that is not
// well-formed. Checks the order (problems first), the status filters with
// their count and URL hash, the search, the links to the reports, no
// sideways scrolling at 400 px, and axe-core's rules at 400 and 1280 px in
// both themes. Saves screenshots to OUTPUT_DIR/screenshots.
//
// Usage: node index_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR

const fs = require('fs');
const os = require('os');
const path = require('path');
const {spawnSync} = require('child_process');

const {CHROMIUM, ARGS, AXE, fileUrl} = require('./chromium');

function die(message) {
  console.error('index browser test: ' + message);
  process.exit(1);
}

const [qendor, sourceDir, outputDir] = process.argv.slice(2).map((a) => path.resolve(a));
if (!outputDir) die('usage: node index_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR');
if (!fs.existsSync(CHROMIUM)) die(CHROMIUM + ' is missing: install the Debian package chromium');
let chromium;
try {
  ({chromium} = require(path.join(__dirname, 'node_modules', 'playwright-core')));
} catch (e) {
  die('tests/browser/node_modules is missing: run make browser-deps\n' + e.message);
}

const {check, equal, finish} = require('./checks');

// Per language: the count of what the filters show, after hiding PASSED.
const LANGUAGES = [
  {code: 'ENU', lang: 'en', shown: '4 of 7 test contexts shown', all: '7 of 7 test contexts shown'},
  {code: 'JPN', lang: 'ja', shown: '7 件中 4 件のテストコンテキストを表示', all: '7 件中 7 件のテストコンテキストを表示'},
];

// The bundled example's context and six small ones (the even ones fail)
// reported into one folder, each run with -index, and a broken document.
function makeFolder(code) {
  const work = path.join(outputDir, 'index', code);
  fs.rmSync(work, {recursive: true, force: true});
  const out = path.join(work, 'out');
  fs.mkdirSync(path.join(work, 'src'), {recursive: true});
  fs.mkdirSync(out, {recursive: true});
  let info = 'ActiveProject Pkg\nActiveComponent Small\nActiveConfiguration Release\n';
  let log = '';
  for (let i = 1; i <= 6; i++) {
    info += 'TESTCASE Pkg.Ctx' + i + '.Sum' + i + ' ' + i + ' -\n';
    log += '[10:00:0' + i + '] Executing test case Pkg.Ctx' + i + '.Sum' + i + '\n' +
      'FULLASSERTION=..\\src\\sum.cpp,5,' + i + ',Starting test case: Sum-----ZKR_ASSERT_TRUE("Starting test case: Sum");\n' +
      'FULLASSERTION=..\\src\\sum.cpp,8,' + (i % 2) + ',sum-----ZKR_ASSERT_EQUAL(sum(), 3);\n' +
      'FULLASSERTION=..\\src\\sum.cpp,11,1,Finished test case: Sum' + i +
      '-----ZKR_ASSERT_TRUE("Finished test case: Sum' + i + '");\n';
  }
  fs.writeFileSync(path.join(work, 'small.info'), info + 'FILE "./src/sum.cpp" 1\n');
  fs.writeFileSync(path.join(work, 'small.log'), log);
  fs.writeFileSync(path.join(work, 'src', 'sum.cpp'), 'int sum();\n');
  fs.writeFileSync(path.join(out, 'Broken.xml'), '<TestResult kind="rk_testcontext"><ResultHeader');
  const env = Object.assign({}, process.env, {TZ: 'UTC'});
  for (let i = 1; i <= 6; i++) {
    const run = spawnSync(qendor, ['-infofile', 'small.info', '-resultfile', 'small.log', '-outdirectory', 'out',
                                   '-tcontext', 'Pkg.Ctx' + i, '-language', code, '-index'],
                          {cwd: work, encoding: 'utf8', env});
    equal(code + ': exit status of Ctx' + i, i % 2 ? 0 : 10, run.status);
  }
  const examples = path.join(sourceDir, 'examples');
  for (const f of fs.readdirSync(path.join(examples, 'verification'))) {
    fs.copyFileSync(path.join(examples, 'verification', f), path.join(out, f));
  }
  const run = spawnSync(qendor, ['-infofile', 'shop.info', '-resultfile', 'results.log', '-outdirectory', out,
                                 '-tcontext', 'Shop.Checkout', '-language', code, '-index'],
                        {cwd: examples, encoding: 'utf8', env});
  equal(code + ': exit status of the example', 10, run.status);
  if (!fs.existsSync(path.join(out, 'index.html'))) die(code + ': no index page: ' + run.stderr);
  return path.join(out, 'index.html');
}


async function axeViolations(page) {
  await page.addScriptTag({path: AXE});
  return page.evaluate(async () => (await window.axe.run(document)).violations.map((v) =>
    v.id + ': ' + v.nodes.slice(0, 3).map((n) => n.target.join(' ')).join(', ')));
}

const visible = (page) => page.$$eval('li.ctx', (all) =>
  all.filter((li) => li.getClientRects().length).map((li) => li.querySelector('a.name').textContent));

async function checkPage(context, L, file, shots) {
  const page = await context.newPage();
  const errors = [];
  page.on('console', (m) => { if (m.type() === 'error') errors.push(m.text()); });
  page.on('pageerror', (e) => errors.push(e.message));
  await page.goto(fileUrl(file));
  equal(L.code + ': lang', L.lang, await page.getAttribute('html', 'lang'));
  check(L.code + ': controls shown by the script', await page.isVisible('#controls'));
  equal(L.code + ': problems first, then by name',
        ['Pkg.Ctx2', 'Pkg.Ctx4', 'Pkg.Ctx6', 'Shop.Checkout', 'Pkg.Ctx1', 'Pkg.Ctx3', 'Pkg.Ctx5'], await visible(page));
  equal(L.code + ': the broken document is noted', 'Broken.xml',
        await page.textContent('.skipped .mono'));
  equal(L.code + ': count before filtering', L.all, await page.textContent('#shown'));
  equal(L.code + ': accessibility at 1280 px (axe-core)', [], await axeViolations(page));
  if (L.code === 'ENU') await page.screenshot({path: path.join(shots, 'index-ENU.png')});

  // The filters: PASSED hidden, the count and the hash follow.
  await page.click('.filters input[value="PASSED"]');
  equal(L.code + ': PASSED hidden', ['Pkg.Ctx2', 'Pkg.Ctx4', 'Pkg.Ctx6', 'Shop.Checkout'], await visible(page));
  equal(L.code + ': count after filtering', L.shown, await page.textContent('#shown'));
  equal(L.code + ': hash', '#hide=PASSED', await page.evaluate(() => location.hash));
  await page.click('.filters input[value="FAILED"]');
  equal(L.code + ': FAILED hidden too', [], await visible(page));
  check(L.code + ': no-match note', await page.isVisible('#nomatch'));
  await page.click('.filters input[value="FAILED"]');
  await page.click('.filters input[value="PASSED"]');

  // The search, over names, projects and files.
  // Shown once the search has run (it waits for the typing to pause).
  const only = (name) => page.waitForFunction((n) => {
    const on = document.querySelectorAll('li.ctx:not([hidden]) a.name');
    return on.length === 1 && on[0].textContent === n;
  }, name);
  await page.fill('#q', 'ctx3');
  await only('Pkg.Ctx3');
  equal(L.code + ': search by name', ['Pkg.Ctx3'], await visible(page));
  await page.fill('#q', 'checkout.xml');
  await only('Shop.Checkout');
  equal(L.code + ': search by file', ['Shop.Checkout'], await visible(page));
  equal(L.code + ': search in the hash', '#q=checkout.xml', await page.evaluate(() => location.hash));

  // The hash restores the state when the page is opened with it.
  await page.goto(fileUrl(file) + '#hide=FAILED,PASSED');
  await page.reload();
  equal(L.code + ': state from the hash', [], await visible(page));
  await page.goto(fileUrl(file));
  await page.waitForFunction(() => document.querySelectorAll('li.ctx:not([hidden])').length === 7);

  // Each name links to its report.
  const links = await page.$$eval('li.ctx a.name', (all) => all.map((a) => a.href));
  equal(L.code + ': every linked report is there', [],
        links.filter((href) => !fs.existsSync(decodeURIComponent(new URL(href).pathname))));
  await page.click('li.ctx a.name:text-is("Pkg.Ctx2")');
  await page.waitForURL(/Ctx2\.html$/);
  check(L.code + ': the link opens the report', (await page.textContent('h1')).includes('Pkg.Ctx2'));
  await page.goBack();

  // Dark at 1280 px.
  await page.emulateMedia({colorScheme: 'dark'});
  equal(L.code + ': dark follows the system', 'rgb(13, 17, 23)',
        await page.evaluate(() => getComputedStyle(document.body).backgroundColor));
  equal(L.code + ': accessibility at 1280 px, dark (axe-core)', [], await axeViolations(page));
  if (L.code === 'ENU') await page.screenshot({path: path.join(shots, 'index-ENU-dark.png')});

  // A phone, in both themes.
  await page.setViewportSize({width: 400, height: 800});
  await page.waitForFunction(() => window.innerWidth === 400 && document.documentElement.clientWidth <= 400);
  for (const scheme of ['dark', 'light']) {
    await page.emulateMedia({colorScheme: scheme});
    const width = await page.evaluate(() => document.documentElement.scrollWidth);
    check(L.code + ' ' + scheme + ': no sideways scrolling at 400 px', width <= 400, width);
    equal(L.code + ': accessibility at 400 px, ' + scheme + ' (axe-core)', [], await axeViolations(page));
  }
  await page.screenshot({path: path.join(shots, 'index-' + L.code + '-400.png')});
  equal(L.code + ': no script errors', [], errors);
  await page.close();
}

(async () => {
  const shots = path.join(outputDir, 'screenshots');
  fs.mkdirSync(shots, {recursive: true});
  const pages = LANGUAGES.map((L) => makeFolder(L.code));
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1280, height: 900},
  });
  try {
    for (let i = 0; i !== LANGUAGES.length; i++) await checkPage(context, LANGUAGES[i], pages[i], shots);
  } finally {
    await context.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
  finish(shots);
})().catch((e) => die(e.stack || String(e)));
