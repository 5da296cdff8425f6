'use strict';
// Opens the context report of a history sample (a new failure, a fix, a
// flaky and a still failing test case over three runs) in Chromium, in
// English and Japanese, and checks what the history says at the top: the
// banner's counts link to the first of their kind, the first problem is the
// new failure, the "Only" filters narrow the list, keep their state in the
// URL and give way to a deep link, the trend chart spans the page with its
// numbers as text, nothing scrolls sideways at 400 px, and axe-core finds
// nothing in either theme.
//
// Usage: node history_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR

const fs = require('fs');
const path = require('path');
const {spawnSync} = require('child_process');

const {CHROMIUM, ARGS, AXE, fileUrl} = require('./chromium');

function die(message) {
  console.error('history browser test: ' + message);
  process.exit(1);
}

const [qendor, sourceDir, outputDir] = process.argv.slice(2).map((a) => path.resolve(a));
if (!outputDir) die('usage: node history_test.js QENDOR_BINARY SOURCE_DIR OUTPUT_DIR');
let chromium;
try {
  ({chromium} = require(path.join(__dirname, 'node_modules', 'playwright-core')));
} catch (e) {
  die('tests/browser/node_modules is missing: run npm ci --prefix tests/browser\n' + e.message);
}
const {check, equal, finish} = require('./checks');

// The sample rendered with the stylesheets that lie beside the program.
function render(code) {
  const out = path.join(outputDir, 'history-page');
  fs.mkdirSync(out, {recursive: true});
  const html = path.join(out, 'Checkout-' + code + '.html');
  const sheet = path.join(path.dirname(qendor), 'TestResult2' + code + '.xslt');
  const run = spawnSync('xsltproc', ['-o', html, sheet,
                                     path.join(sourceDir, 'tests', 'stylesheet_samples', 'context_history.xml')],
                        {encoding: 'utf8'});
  if (run.status !== 0) die('xsltproc failed: ' + run.stderr);
  return html;
}


async function visibleCases(page) {
  return page.$$eval('details.case', (all) => all.filter((c) => !c.hidden).map((c) => c.id));
}

async function axe(page, what) {
  await page.addScriptTag({path: AXE});
  const result = await page.evaluate(async () => (await window.axe.run(document)).violations.map((v) => v.id));
  equal(what + ': axe violations', [], result);
}

(async () => {
  const browser = await chromium.launch({executablePath: CHROMIUM, args: ARGS});
  try {
    for (const code of ['ENU', 'JPN']) {
      const url = fileUrl(render(code));
      for (const width of [1280, 400]) {
        for (const scheme of ['light', 'dark']) {
          const what = code + ' ' + width + ' ' + scheme;
          const page = await browser.newPage({viewport: {width, height: 900}, colorScheme: scheme});
          await page.goto(url);
          await page.waitForFunction(() => !document.getElementById('controls').hidden);
          equal(what + ': banner links', ['#tc-Broken', '#tc-Mended', '#tc-Bounce'],
                await page.$$eval('#hist-banner a', (all) => all.map((a) => a.getAttribute('href'))));
          equal(what + ': first problem is the new failure', '#tc-Broken',
                await page.getAttribute('#first-problem', 'href'));
          const bars = await page.$$eval('.hist-chart .hb', (all) => all.map((b) => b.textContent));
          equal(what + ': bars with counts and run numbers', 3, bars.length);
          const chart = await page.$eval('.hist-chart', (c) => c.getBoundingClientRect().width);
          const summary = await page.$eval('main', (m) => m.getBoundingClientRect().width);
          check(what + ': the chart spans the page', chart >= summary - 2, {chart, summary});
          await page.$$eval('details', (all) => all.forEach((d) => { d.open = true; }));
          equal(what + ': no sideways scroll', width,
                await page.evaluate(() => document.documentElement.scrollWidth));
          await axe(page, what);
          await page.close();
        }
      }
      // The change filters, at 1280 px.
      const page = await browser.newPage({viewport: {width: 1280, height: 900}});
      await page.goto(url);
      await page.waitForFunction(() => !document.getElementById('controls').hidden);
      equal(code + ': all shown at first', ['tc-Bounce', 'tc-Mended', 'tc-Broken', 'tc-Hang'], await visibleCases(page));
      await page.check('.changes input[value=new]');
      await page.waitForFunction(() => location.hash === '#only=new');
      equal(code + ': only the new failure', ['tc-Broken'], await visibleCases(page));
      await page.check('.changes input[value=flaky]');
      await page.waitForFunction(() => location.hash === '#only=new,flaky');
      equal(code + ': new and flaky', ['tc-Bounce', 'tc-Broken'], await visibleCases(page));
      // The status filters still apply on top.
      await page.uncheck('.filters:not(.changes) input[value=FAILED]');
      await page.waitForFunction(() => location.hash === '#hide=FAILED&only=new,flaky');
      equal(code + ': and not failed', [], await visibleCases(page));
      await page.close();
      // The state comes back from the URL; a deep link to a test case the
      // filter hides shows it.
      const again = await browser.newPage({viewport: {width: 1280, height: 900}});
      await again.goto(url + '#only=fixed');
      await again.waitForFunction(() => !document.getElementById('controls').hidden);
      equal(code + ': only fixed from the URL', ['tc-Mended'], await visibleCases(again));
      equal(code + ': its box ticked', true, await again.isChecked('.changes input[value=fixed]'));
      await again.close();
      const link = await browser.newPage({viewport: {width: 1280, height: 900}});
      await link.goto(url + '#only=fixed');
      await link.waitForFunction(() => !document.getElementById('controls').hidden);
      await link.evaluate(() => { location.hash = '#tc-Broken'; });
      await link.waitForFunction(() => !document.getElementById('tc-Broken').hidden);
      equal(code + ': the deep link clears the change filter', false,
            await link.isChecked('.changes input[value=fixed]'));
      await link.close();
    }
  } finally {
    await browser.close();
  }
  finish('history browser test');
})().catch((e) => die(e.stack || String(e)));
