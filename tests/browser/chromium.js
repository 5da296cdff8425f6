'use strict';
// What every browser test starts Chromium with: Debian's build, the flags
// this machine's closed network needs (no background connections, no QUIC),
// axe-core from tests/browser/node_modules, and file URLs of reports.

const path = require('path');

const CHROMIUM = '/usr/bin/chromium';
const ARGS = ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
              '--disable-background-networking', '--disable-component-update', '--disable-sync'];
const AXE = path.join(__dirname, 'node_modules', 'axe-core', 'axe.min.js');

const fileUrl = (file) => 'file://' + file.split(path.sep).map(encodeURIComponent).join('/');

module.exports = {CHROMIUM, ARGS, AXE, fileUrl};
