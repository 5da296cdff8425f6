'use strict';
// Opens the report of the explained example (examples/explain, reported with
// -explain) in Chromium and checks the picture of each diagnosis: the right
// marks on the right steps, the sentence, the rejected message in its place,
// no sideways scrolling at 400 px, readable in dark mode, and the same page
// with scripts off. Saves screenshots to OUTPUT_DIR/screenshots.
//
// Usage: node diagnosis_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR

const fs = require('fs');
const os = require('os');
const path = require('path');
const {spawnSync} = require('child_process');

const {CHROMIUM, ARGS, AXE, fileUrl} = require('./chromium');
const LANGUAGES = ['ENU', 'CHS', 'CHT', 'KOR', 'JPN'];

function die(message) {
  console.error('diagnosis browser test: ' + message);
  process.exit(1);
}

const [qendor, sourceDir, outputDir] = process.argv.slice(2).map((a) => path.resolve(a));
if (!outputDir) die('usage: node diagnosis_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR');
if (!fs.existsSync(CHROMIUM)) die(CHROMIUM + ' is missing: install the Debian package chromium');
let chromium;
try {
  ({chromium} = require(path.join(__dirname, 'node_modules', 'playwright-core')));
} catch (e) {
  die('tests/browser/node_modules is missing: run npm ci --prefix tests/browser\n' + e.message);
}

const {check, equal, finish} = require('./checks');

function makeReports(code) {
  const example = path.join(sourceDir, 'examples', 'explain');
  const out = path.join(outputDir, 'diagnosis', code);
  fs.rmSync(out, {recursive: true, force: true});
  fs.mkdirSync(out, {recursive: true});
  for (const f of fs.readdirSync(path.join(example, 'verification'))) {
    fs.copyFileSync(path.join(example, 'verification', f), path.join(out, f));
  }
  const run = spawnSync(qendor, ['-infofile', 'explain.info', '-resultfile', 'results.log', '-outdirectory', out,
                                 '-tcontext', 'Shop.Returns', '-language', code, '-explain'],
                        {cwd: example, encoding: 'utf8', env: Object.assign({}, process.env, {TZ: 'UTC'})});
  equal(code + ': exit status', 10, run.status);
  if (!fs.existsSync(path.join(out, 'Returns.html'))) die(code + ': no report was made: ' + run.stderr);
  return out;
}

// The bundled checkout example reported twice with -history into one folder,
// so that the second report shows the earlier run.
function makeHistoryReports(code) {
  const examples = path.join(sourceDir, 'examples');
  const out = path.join(outputDir, 'history', code);
  fs.rmSync(out, {recursive: true, force: true});
  fs.mkdirSync(out, {recursive: true});
  for (const f of fs.readdirSync(path.join(examples, 'verification'))) {
    fs.copyFileSync(path.join(examples, 'verification', f), path.join(out, f));
  }
  for (let run = 0; run !== 2; run++) {
    const result = spawnSync(qendor, ['-infofile', 'shop.info', '-resultfile', 'results.log', '-outdirectory', out,
                                      '-tcontext', 'Shop.Checkout', '-language', code, '-history', path.join(out, 'runs')],
                             {cwd: examples, encoding: 'utf8', env: Object.assign({}, process.env, {TZ: 'UTC'})});
    equal(code + ': exit status with -history', 10, result.status);
  }
  if (!fs.existsSync(path.join(out, 'Checkout.html'))) die(code + ': no history report was made');
  return out;
}

// axe-core's rules on the page as loaded: the violations, each with the first
// elements it names.
async function axeViolations(page) {
  await page.addScriptTag({path: AXE});
  return page.evaluate(async () => (await window.axe.run(document)).violations.map((v) =>
    v.id + ': ' + v.nodes.slice(0, 3).map((n) => n.target.join(' ')).join(', ')));
}

// Every page of a folder (the context's and each test case's) passes axe;
// at 400 px, with every block open, nothing scrolls sideways and each table
// scrolls in its own box.
async function axeAndNarrow(context, dir, what) {
  const page = await context.newPage();
  for (const file of fs.readdirSync(dir).filter((f) => f.endsWith('.html')).sort()) {
    await page.setViewportSize({width: 1280, height: 900});
    await page.goto(fileUrl(path.join(dir, file)));
    equal(what + ' ' + file + ': accessibility (axe-core)', [], await axeViolations(page));
    await page.setViewportSize({width: 400, height: 800});
    await page.evaluate(() => document.querySelectorAll('details').forEach((d) => { d.open = true; }));
    await page.waitForFunction(() => window.innerWidth === 400);
    const widths = await page.evaluate(() => ({page: document.documentElement.scrollWidth, view: window.innerWidth}));
    check(what + ' ' + file + ' at 400 px, all open: no sideways scrolling', widths.page <= widths.view, widths);
    const loose = await page.$$eval('table', (tables) => tables.filter((t) => t.getClientRects().length).filter((t) => {
      const box = t.closest('.scroll');
      return !box || box.getBoundingClientRect().right > window.innerWidth + 0.5;
    }).map((t) => t.className));
    equal(what + ' ' + file + ' at 400 px: every table in a box that fits', [], loose);
    if (file === 'Checkout.html' || file === 'Returns.html') {
      equal(what + ' ' + file + ' dark: accessibility (axe-core)', [],
            await page.emulateMedia({colorScheme: 'dark'}).then(() => axeViolations(page)));
      await page.emulateMedia({colorScheme: 'light'});
    }
  }
  await page.close();
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

// What the sequence diagram's picture shows, in reading order.
const pictureOf = (page) => page.$$eval('#tc-RefundOrder .sd-outline .chip', (chips) =>
  chips.map((c) => {
    const own = Array.from(c.childNodes).filter((n) => n.nodeType === 3).map((n) => n.textContent).join('');
    const frag = c.closest('.frag');
    return {
      text: own.trim(),
      marks: c.className.replace('chip', '').trim(),
      inside: frag ? frag.querySelector('.op').textContent.split(' ')[0] : '',
      spoken: (c.querySelector('.sr') || {textContent: ''}).textContent.trim(),
    };
  }));

async function run() {
  const shots = path.join(outputDir, 'screenshots');
  fs.mkdirSync(shots, {recursive: true});
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1280, height: 900},
  });
  try {
    for (const code of ['ENU', 'JPN']) {
      const out = makeReports(code);
      const page = await context.newPage();
      const errors = [];
      page.on('pageerror', (e) => errors.push(e.message));
      await page.goto(fileUrl(path.join(out, 'Returns.html')));
      check(code + ': two diagnoses are visible',
            (await page.$$eval('.diag', (all) => all.filter((d) => d.getClientRects().length).length)) === 2);
      const picture = await pictureOf(page);
      equal(code + ': chips in reading order', ['1', '2', '3', '4', '2', '5'], picture.map((c) => c.text));
      equal(code + ': reached steps are filled, the rejected one marked',
            ['reached', '', '', 'reached', 'rejected', ''], picture.map((c) => c.marks));
      equal(code + ': steps stand in their fragments', ['', 'alt', 'alt', 'opt', '', ''],
            picture.map((c) => c.inside));
      check(code + ': a hollow step says so to a screen reader', picture[1].spoken.length > 0, picture[1]);
      if (code === 'ENU') {
        equal('ENU: the sentence',
              'The run passed over alt Returns.refund; inside opt Returns.mail, operand 1 was taken at step 4; ' +
              'after step 4 the diagram expects 5; the run recorded step 2 (refundToCard), which lies behind, ' +
              'in alt Returns.refund.',
              (await page.textContent('#tc-RefundOrder .diag-sentence')).trim());
        equal('ENU: a hollow step is read as not reached', 'not reached', picture[1].spoken);
        equal('ENU: the rejected chip is read as rejected', 'rejected', picture[4].spoken);
      }
      const path_ = await page.$$eval('#tc-ReturnParcel .chart-path .chip', (chips) =>
        chips.map((c) => c.className.replace('chip', '').trim()));
      equal(code + ': chart path ends at the stop', ['state reached', 'transition', 'state reached', 'rejected'],
            path_);
      check(code + ': the unmatched assertion is named',
            (await page.textContent('#tc-ReturnParcel .chart-path .rejected')).includes('order.isPaid()'));
      // The chart drawn: the path's marks on their states and transitions,
      // where the search stopped, what performs the missed assertion and
      // what blocked the way there; the rest pale.
      const drawn = await page.$$eval('#tc-ReturnParcel svg.chart-svg g', (groups) => groups.map((g) => ({
        cls: g.getAttribute('class'),
        texts: Array.from(g.querySelectorAll('text')).map((t) => t.textContent),
      })));
      const named = (kind, name) => drawn.find((g) => g.cls.startsWith(kind) && g.texts[0] === name) || {cls: '', texts: []};
      check(code + ': the chart is drawn', (await page.$eval('#tc-ReturnParcel svg.chart-svg',
                                                           (svg) => svg.getBoundingClientRect().height)) > 100);
      equal(code + ': Init is step 1', ['Node state on', ['Init', '1']], [named('Node', 'Init').cls, named('Node', 'Init').texts]);
      check(code + ': Filled is step 3 and where the search stopped',
            /\bon\b.*\bstop\b/.test(named('Node', 'Filled').cls) && named('Node', 'Filled').texts.includes('3'),
            named('Node', 'Filled'));
      check(code + ': addItem is step 2', /\bon\b/.test(named('Edge', 'addItem').cls) &&
            named('Edge', 'addItem').texts.includes('2'), named('Edge', 'addItem'));
      check(code + ': Paid performs the missed assertion, pale',
            /\bpale\b.*\bperforms\b/.test(named('Node', 'Paid').cls), named('Node', 'Paid'));
      check(code + ': checkout blocked the way', /\bblocked\b/.test(named('Edge', 'checkout').cls),
            named('Edge', 'checkout'));
      check(code + ': End never visited, pale', /\bpale\b/.test(named('Node', 'End').cls), named('Node', 'End'));
      // The stop mark leads to the assertion's row, whose mark leads back.
      await page.click('#tc-ReturnParcel svg.chart-svg a.stop-mark');
      await page.waitForFunction(() => location.hash === '#tc-ReturnParcel-a3');
      const back = await page.$eval('#tc-ReturnParcel-a3 a.model-mark', (a) => a.getAttribute('href'));
      equal(code + ': the row links back to the picture', '#tc-ReturnParcel-rej', back);
      check(code + ': the way back exists', (await page.$('#tc-ReturnParcel-rej')) !== null);
      await page.screenshot({path: path.join(shots, 'Returns-' + code + '.png'), fullPage: true});

      // A phone: the picture wraps, the page never scrolls sideways.
      await page.setViewportSize({width: 400, height: 800});
      // The page has taken the new width once the window reports it.
      await page.waitForFunction(() => window.innerWidth === 400 &&
                                 document.documentElement.clientWidth <= 400);
      const width = await page.evaluate(() => document.documentElement.scrollWidth);
      check(code + ': the page never scrolls sideways at 400 px', width <= 400, width);
      const overflow = await page.$$eval('.diag', (all) =>
        all.map((d) => d.scrollWidth - d.clientWidth).filter((extra) => extra > 0));
      equal(code + ': no diagnosis scrolls sideways at 400 px', [], overflow);
      const diagWidth = await page.$eval('#tc-RefundOrder .diag', (d) => d.getBoundingClientRect().right);
      check(code + ': the picture fits at 400 px', diagWidth <= 400, diagWidth);
      await page.screenshot({path: path.join(shots, 'Returns-' + code + '-400.png'), fullPage: true});

      // Dark mode: every mark still reads against its background.
      await page.setViewportSize({width: 1280, height: 900});
      await page.emulateMedia({colorScheme: 'dark'});
      const colours = await page.$$eval('#tc-RefundOrder .sd-outline .chip', (chips) => chips.map((c) => {
        let bg = getComputedStyle(c).backgroundColor;
        for (let e = c.parentElement; e && /rgba\(0, 0, 0, 0\)|transparent/.test(bg); e = e.parentElement) {
          bg = getComputedStyle(e).backgroundColor;
        }
        return [getComputedStyle(c).color, bg];
      }));
      for (const [fg, bg] of colours) {
        check(code + ': dark chip readable (' + fg + ' on ' + bg + ')', contrast(fg, bg) >= 4.5);
      }
      // The drawing's names read in dark mode, pale ones included.
      const drawnColours = await page.$$eval('#tc-ReturnParcel svg.chart-svg g.Node', (groups) =>
        groups.filter((g) => g.querySelector('text')).map((g) => {
          const fill = getComputedStyle(g.querySelector('rect')).fill;
          let bg = fill;
          for (let e = g.closest('div'); e && (!/^rgb/.test(bg) || /rgba\(0, 0, 0, 0\)/.test(bg)); e = e.parentElement) {
            bg = getComputedStyle(e).backgroundColor;
          }
          return [g.querySelector('text').textContent, getComputedStyle(g.querySelector('text')).fill, bg];
        }));
      for (const [name, fg, bg] of drawnColours) {
        check(code + ': dark drawing, ' + name + ' readable (' + fg + ' on ' + bg + ')', contrast(fg, bg) >= 4.5);
      }
      await page.screenshot({path: path.join(shots, 'Returns-' + code + '-dark.png'), fullPage: true});
      await page.emulateMedia({colorScheme: 'light'});
      equal(code + ': no script errors', [], errors);
      await page.close();
    }
  } finally {
    await context.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }

  // Pages made with -explain and with -history, in every language.
  const profile3 = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const all = await chromium.launchPersistentContext(profile3, {
    executablePath: CHROMIUM, headless: true, args: ARGS, viewport: {width: 1280, height: 900},
  });
  try {
    for (const code of LANGUAGES) {
      await axeAndNarrow(all, makeReports(code), code + ' -explain');
      await axeAndNarrow(all, makeHistoryReports(code), code + ' -history');
    }
  } finally {
    await all.close();
    fs.rmSync(profile3, {recursive: true, force: true});
  }

  // Without scripts the picture is the same.
  const profile2 = fs.mkdtempSync(path.join(os.tmpdir(), 'qendor-chromium-'));
  const plain = await chromium.launchPersistentContext(profile2, {
    executablePath: CHROMIUM, headless: true, args: ARGS, javaScriptEnabled: false,
    viewport: {width: 1280, height: 900},
  });
  try {
    const page = await plain.newPage();
    await page.goto(fileUrl(path.join(outputDir, 'diagnosis', 'ENU', 'Returns.html')));
    equal('no script: chips', ['1', '2', '3', '4', '2', '5'], (await pictureOf(page)).map((c) => c.text));
  } finally {
    await plain.close();
    fs.rmSync(profile2, {recursive: true, force: true});
  }
  finish(shots);
}

run().catch((e) => die(e.stack || String(e)));
