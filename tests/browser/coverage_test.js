'use strict';
// Opens the context report of the bundled example, reported twice with
// -coverage and -history, in Chromium and checks the model coverage view:
// what no test case reached comes before each model, every count is text on
// its shade, the text reads at 4.5:1 or more on every shade in both themes,
// the page never scrolls sideways at 400 px, and axe-core finds nothing in
// either theme. Saves screenshots to OUTPUT_DIR/screenshots.
//
// Usage: node coverage_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR

const fs = require('fs');
const os = require('os');
const path = require('path');
const {spawnSync} = require('child_process');

const {CHROMIUM, ARGS, AXE, fileUrl} = require('./chromium');

function die(message) {
  console.error('coverage browser test: ' + message);
  process.exit(1);
}

const [qendor, sourceDir, outputDir] = process.argv.slice(2).map((a) => path.resolve(a));
if (!outputDir) die('usage: node coverage_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR');
if (!fs.existsSync(CHROMIUM)) die(CHROMIUM + ' is missing: install the Debian package chromium');
let chromium;
try {
  ({chromium} = require(path.join(__dirname, 'node_modules', 'playwright-core')));
} catch (e) {
  die('tests/browser/node_modules is missing: run npm ci --prefix tests/browser\n' + e.message);
}

const {check, equal, finish} = require('./checks');

function makeReports(code) {
  const example = path.join(sourceDir, 'examples');
  const out = path.join(outputDir, 'coverage', code);
  const history = path.join(outputDir, 'coverage', code + '-history');
  fs.rmSync(out, {recursive: true, force: true});
  fs.rmSync(history, {recursive: true, force: true});
  fs.mkdirSync(out, {recursive: true});
  for (const f of fs.readdirSync(path.join(example, 'verification'))) {
    fs.copyFileSync(path.join(example, 'verification', f), path.join(out, f));
  }
  for (let round = 0; round < 2; round++) {
    const run = spawnSync(qendor, ['-infofile', 'shop.info', '-resultfile', 'results.log', '-outdirectory', out,
                                   '-tcontext', 'Shop.Checkout', '-language', code, '-coverage',
                                   '-history', history],
                          {cwd: example, encoding: 'utf8', env: Object.assign({}, process.env, {TZ: 'UTC'})});
    equal(code + ': exit status', 10, run.status);
  }
  if (!fs.existsSync(path.join(out, 'Checkout.html'))) die(code + ': no report was made');
  return out;
}


// The relative luminance contrast of two "rgb(r, g, b)" colours.
function contrast(a, b) {
  const lum = (c) => {
    const [r, g, bl] = c.match(/[\d.]+/g).slice(0, 3).map(Number).map((v) => {
      const s = v / 255;
      return s <= 0.03928 ? s / 12.92 : Math.pow((s + 0.055) / 1.055, 2.4);
    });
    return 0.2126 * r + 0.7152 * g + 0.0722 * bl;
  };
  const [hi, lo] = [lum(a), lum(b)].sort((x, y) => y - x);
  return (hi + 0.05) / (lo + 0.05);
}

// Every piece of text of the view with its colour and the first opaque
// background behind it.
const colours = (page) => page.$$eval('.cov .cov-chip, .cov .cov-n, .cov .cov-at, .cov-table td, .cov-table th',
  (all) => all.filter((e) => e.getClientRects().length).map((e) => {
    let bg = getComputedStyle(e).backgroundColor;
    for (let p = e.parentElement; p && /rgba\(0, 0, 0, 0\)|transparent/.test(bg); p = p.parentElement) {
      bg = getComputedStyle(p).backgroundColor;
    }
    return [e.className || e.tagName, getComputedStyle(e).color, bg];
  }));

async function axeViolations(page) {
  await page.addScriptTag({path: AXE});
  return page.evaluate(async () => (await window.axe.run(document.querySelector('.cov'))).violations.map((v) =>
    v.id + ': ' + v.nodes.slice(0, 3).map((n) => n.target.join(' ')).join(', ')));
}

async function run() {
  const shots = path.join(outputDir, 'screenshots');
  fs.mkdirSync(shots, {recursive: true});
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1280, height: 900},
  });
  try {
    for (const code of ['ENU', 'KOR']) {
      const out = makeReports(code);
      const page = await context.newPage();
      const errors = [];
      page.on('pageerror', (e) => errors.push(e.message));
      await page.goto(fileUrl(path.join(out, 'Checkout.html')));
      equal(code + ': one view per model', 7, await page.$$eval('.cov-model', (all) => all.length));
      // Headings in order: the section's h2, then h3 per model, h4 inside.
      const levels = await page.$$eval('.cov h2, .cov h3, .cov h4', (all) => all.map((h) => h.tagName));
      equal(code + ': headings in order', ['H2', 'H3', 'H4', 'H4'], levels.slice(0, 4));
      // What no test case reached stands before the model.
      const first = await page.$eval('.cov-model', (m) => Array.from(m.querySelectorAll('h4, ul, .cov-box'))
        .map((e) => e.tagName + '.' + e.className));
      equal(code + ': unreached first', ['UL.cov-totals', 'H4.', 'UL.cov-unreached', 'H4.', 'DIV.cov-box'], first);
      const chips = await page.$$eval('#cov-1 ~ .cov-box .cov-chip', (all) =>
        all.map((c) => [c.firstChild.textContent.trim(), c.querySelector('.cov-n').textContent.trim()]));
      check(code + ': every chip carries its count as text', chips.length === 4 && chips.every((c) => c[1] !== ''),
            chips);
      check(code + ': the runs kept are counted', (await page.textContent('#cov-1 ~ .cov-totals')).includes('2'));
      for (const [what, fg, bg] of await colours(page)) {
        check(code + ': light ' + what + ' readable (' + fg + ' on ' + bg + ')', contrast(fg, bg) >= 4.5);
      }
      equal(code + ': accessibility (axe-core)', [], await axeViolations(page));
      await page.locator('.cov').screenshot({path: path.join(shots, 'Coverage-' + code + '.png')});

      await page.setViewportSize({width: 400, height: 800});
      await page.waitForFunction(() => window.innerWidth === 400 &&
                                 document.documentElement.clientWidth <= 400);
      const width = await page.evaluate(() => document.documentElement.scrollWidth);
      check(code + ': the page never scrolls sideways at 400 px', width <= 400, width);
      const right = await page.$$eval('.cov-model', (all) => Math.max(...all.map((m) => m.getBoundingClientRect().right)));
      check(code + ': every model fits at 400 px', right <= 400, right);
      await page.locator('.cov').screenshot({path: path.join(shots, 'Coverage-' + code + '-400.png')});

      await page.setViewportSize({width: 1280, height: 900});
      await page.emulateMedia({colorScheme: 'dark'});
      for (const [what, fg, bg] of await colours(page)) {
        check(code + ': dark ' + what + ' readable (' + fg + ' on ' + bg + ')', contrast(fg, bg) >= 4.5);
      }
      equal(code + ': dark: accessibility (axe-core)', [], await axeViolations(page));
      await page.locator('.cov').screenshot({path: path.join(shots, 'Coverage-' + code + '-dark.png')});
      await page.emulateMedia({colorScheme: 'light'});
      equal(code + ': no script errors', [], errors);
      await page.close();
    }
  } finally {
    await context.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
  finish(shots);
}

run().catch((e) => die(e.stack || String(e)));
