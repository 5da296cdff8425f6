# `make bench`: generates large scenarios under /tmp, measures qendor against
# its baselines and prints one table row per figure (see bench/bench.sh).
.PHONY: bench

bench: build
	@sh bench/bench.sh $(BUILD)
