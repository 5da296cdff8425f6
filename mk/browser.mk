# Browser tests of the HTML reports: Debian's chromium and node, and
# playwright-core and axe-core from the npm registry
# (tests/browser/package-lock.json). fonts-nanum gives the Korean screenshots
# their glyphs, fonts-noto-cjk the Chinese and Japanese ones. npm comes with some node builds; the Debian package is added
# only when the command is missing. Only `make test` installs them: in a build
# folder without them the browser test reports itself skipped.
BROWSER_PACKAGES := chromium fonts-nanum fonts-noto-cjk nodejs $(if $(shell command -v npm 2>/dev/null),,npm)
test browser-deps: PACKAGES += $(BROWSER_PACKAGES)

.PHONY: browser-deps
browser-deps: build tests/browser/node_modules/.package-lock.json

tests/browser/node_modules/.package-lock.json: tests/browser/package-lock.json tests/browser/package.json
	@npm ci --prefix tests/browser --no-audit --no-fund
	@touch $@

test: browser-deps
