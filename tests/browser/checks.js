'use strict';
// The checks of the browser tests: each failed one prints a line, and the
// counts end the run.

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

// Prints the counts and ends the process: 0 when every check passed.
function finish(where) {
  console.log(passed + ' passed, ' + failed + ' failed; screenshots in ' + where);
  process.exit(failed === 0 ? 0 : 1);
}

module.exports = {check, equal, finish};
