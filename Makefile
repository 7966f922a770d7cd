# CorvaneSupportKit0100: the two commands a newcomer needs are `make demo`
# and `make test`; both install what is missing first.
BUILD ?= build
JOBS ?= $(shell nproc)

.PHONY: all deps build demo test bench clean interface

all: build

deps:
	@bash scripts/install-deps.sh

build: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) native asan win32

demo: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) win32
	@scripts/wine-run $(BUILD)/win32/tour.exe

test: deps
	@bash scripts/test.sh $(BUILD) $(JOBS)

bench: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) win32
	@scripts/wine-run $(BUILD)/win32/bench.exe

clean:
	rm -rf $(BUILD)

# A long run of the fuzz target over the text exports, under the sanitizers.
FUZZ_RUNS ?= 2000000
.PHONY: fuzz
fuzz: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) asan
	@ASAN_OPTIONS=detect_leaks=1 $(BUILD)/asan/path_fuzz $(FUZZ_RUNS) $$(date +%s)

# The Declare module and the reference are kept in the repository for
# readers; after a change to src/frame/ExportTable.txt this writes them anew
# (make test fails while they differ from the table).
interface:
	@python3 scripts/interface.py src/frame/ExportTable.txt $(BUILD)/interface
	@rm -rf docs/reference && cp -r $(BUILD)/interface/reference docs/reference
	@mkdir -p vb6 && cp $(BUILD)/interface/CorvaneSupportKit0100.bas vb6/
