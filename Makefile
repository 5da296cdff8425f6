# Thin wrapper around CMake. Every target works on a fresh Debian 12 machine:
# `setup` installs first what that target needs and is missing.

BUILD          ?= build
SANITIZE_BUILD ?= build-sanitize
TSAN_BUILD     ?= build-tsan
JOBS           ?= $(shell nproc 2>/dev/null || echo 2)

# Debian packages by stage. Building and the demo need only these; a target
# that needs more adds its own to PACKAGES for itself and what it runs first
# (`test: PACKAGES += ...`), so `make demo` installs nothing it does not use.
PACKAGES       := cmake g++ make pkg-config libxml2-dev libxslt1-dev xsltproc libgraphviz-dev
# The unit tests (GoogleTest) and the schema checks (xmllint).
TEST_PACKAGES  := libgtest-dev libxml2-utils
test sanitize tsan: PACKAGES += $(TEST_PACKAGES)
tsan: PACKAGES += libtsan2

# Further targets (benchmarks, fuzzing, packaging, browser tests) live in mk/;
# each adds the packages it needs to its own targets.
.DEFAULT_GOAL := build
-include mk/*.mk

.PHONY: all setup build test demo sanitize tsan format clean

all: build

setup:
	@missing=""; \
	for p in $(PACKAGES); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q 'install ok installed' || missing="$$missing $$p"; \
	done; \
	if [ -z "$$missing" ]; then echo "setup: all packages present"; exit 0; fi; \
	if [ "$$(id -u)" != 0 ]; then \
	  echo "setup: missing Debian packages:$$missing"; \
	  echo "setup: run as root, or: sudo apt-get install$$missing"; exit 1; \
	fi; \
	echo "setup: installing$$missing"; \
	export DEBIAN_FRONTEND=noninteractive; \
	apt-get update -qq && apt-get install -y -qq --no-install-recommends $$missing >/dev/null \
	  || { echo "setup: could not install:$$missing"; exit 1; }

build: setup
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

test: build
	@cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

demo: build
	@sh examples/run-demo.sh $(BUILD)

sanitize: setup
	@cmake -S . -B $(SANITIZE_BUILD) -DCMAKE_BUILD_TYPE=Debug -DQENDOR_SANITIZE=ON >/dev/null
	@cmake --build $(SANITIZE_BUILD) -j $(JOBS)
	@cd $(SANITIZE_BUILD) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp ctest --output-on-failure -j $(JOBS)

# The tests under ThreadSanitizer (not the browser tests, whose runs start no
# thread): the builtin renderer's threads over every test, the end-to-end
# runs and a context of a thousand test cases. A report
# ends the program that finds it with status 66, which fails its test.
tsan: setup
	@cmake -S . -B $(TSAN_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQENDOR_TSAN=ON >/dev/null
	@cmake --build $(TSAN_BUILD) -j $(JOBS)
	@cd $(TSAN_BUILD) && TSAN_OPTIONS="halt_on_error=1 exitcode=66 second_deadlock_stack=1" \
	  ctest --output-on-failure -j $(JOBS) -E '^browser'

format:
	@clang-format -i base/*.h base/*.cc app/*.h app/*.cc input/*.h input/*.cc verify/*.h verify/*.cc \
	  report/*.h report/*.cc tests/*.h tests/*.cc

clean:
	rm -rf $(BUILD) $(SANITIZE_BUILD) $(TSAN_BUILD)
