# CorvaneSupportKit0100: the two commands a newcomer needs are `make demo`
# and `make test`; both install what is missing first.
BUILD ?= build
JOBS ?= $(shell nproc)

.PHONY: all deps build demo test bench clean interface dist

all: build

deps:
	@bash scripts/install-deps.sh

build: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) win32

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

# A long run of the fuzz driver over the text exports, against the checked DLL.
FUZZ_RUNS ?= 300000
.PHONY: fuzz
fuzz: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) checked
	@CSK_FUZZ_RUNS=$(FUZZ_RUNS) CSK_FUZZ_SEED=$$(date +%s) scripts/wine-run $(BUILD)/checked/fuzz.exe

# The release: build/dist/CorvaneSupportKit0100-<version>/ and its .zip.
dist: deps
	@bash scripts/build.sh $(BUILD) $(JOBS) win32
	@bash scripts/dist.sh $(BUILD)

# The Declare module and the reference are kept in the repository for
# readers; after a change to src/frame/ExportTable.txt this writes them anew
# (make test fails while they differ from the table).
interface:
	@python3 scripts/interface.py src/frame/ExportTable.txt $(BUILD)/interface
	@rm -rf docs/reference && cp -r $(BUILD)/interface/reference docs/reference
	@mkdir -p vb6 && cp $(BUILD)/interface/CorvaneSupportKit0100.bas vb6/
