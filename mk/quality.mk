# Robustness checks: fuzzing, static analysis, memcheck.
#
#   make fuzz         every fuzz target for FUZZ_SECONDS (default 60) each
#   make fuzz-smoke   a short round (15 s a target), as CI runs it
#   make lint         clang-tidy and cppcheck, both must be clean
#   make memcheck     the end-to-end scenarios under valgrind memcheck

fuzz-build: PACKAGES += clang libclang-rt-14-dev
lint: PACKAGES += clang clang-tidy cppcheck
memcheck: PACKAGES += valgrind

FUZZ_BUILD    ?= build-fuzz
FUZZ_SECONDS  ?= 60
LINT_BUILD    ?= $(BUILD)
MEMCHECK_BUILD ?= $(BUILD)
FUZZ_TARGETS  := info_file result_file assertion_macro assertion_text verification_file \
                 sequence_verification chart_search whole_run history index_scan

.PHONY: fuzz fuzz-build fuzz-smoke lint memcheck

fuzz-build: setup
	@CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DQENDOR_FUZZ=ON -DQENDOR_TESTS=OFF >/dev/null
	@cmake --build $(FUZZ_BUILD) -j $(JOBS)

# Each target starts from its seed corpus in fuzz/corpus/ and the regression
# inputs in fuzz/regressions/; what it finds new goes to $(FUZZ_BUILD)/corpus/,
# a crashing input to $(FUZZ_BUILD)/artifacts/. The checked-in seeds stay
# untouched.
fuzz: fuzz-build
	@sh fuzz/run-fuzzers.sh $(FUZZ_BUILD) $(FUZZ_SECONDS) $(FUZZ_TARGETS)

fuzz-smoke:
	@$(MAKE) --no-print-directory fuzz FUZZ_SECONDS=15

# clang-tidy reads the compile commands of the build folder (configured as
# `build` does it, so it sees exactly the flags of the build); cppcheck reads
# the sources. Both check the program's own sources, not the tests.
lint: setup
	@cmake -S . -B $(LINT_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@echo "lint: clang-tidy"
	@run-clang-tidy -quiet -p $(LINT_BUILD) -j $(JOBS) \
	  '$(CURDIR)/(base|app|input|verify|report)/.*\.cc$$' >$(LINT_BUILD)/clang-tidy.log 2>&1 \
	  || { grep -E 'warning:|error:' -A3 $(LINT_BUILD)/clang-tidy.log; exit 1; }
	@if grep -qE '(warning|error):' $(LINT_BUILD)/clang-tidy.log; then \
	  grep -E '(warning|error):' -A3 $(LINT_BUILD)/clang-tidy.log; exit 1; fi
	@echo "lint: cppcheck"
	@cppcheck --quiet --error-exitcode=1 --std=c++17 --language=c++ --inline-suppr \
	  --enable=warning,performance,portability --suppress=missingIncludeSystem \
	  -I . base app input verify report

# The bundled examples and the shop scenario under valgrind.
memcheck: build
	@sh fuzz/memcheck.sh $(MEMCHECK_BUILD)
