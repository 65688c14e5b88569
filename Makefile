# drivewiz: the two set-up commands (`make test`, `make demo`) and the benchmarks.
# Each target first installs what is missing (Debian 12, as root) and then builds.

BUILD       ?= build
JOBS        ?= 2
GENERATOR   := $(shell command -v ninja >/dev/null 2>&1 && echo "-G Ninja")
# A compiler cache speeds up rebuilds where one is installed; CI builds without it.
LAUNCHER    := $(shell command -v ccache >/dev/null 2>&1 && \
                 echo "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache")

.PHONY: all deps test fuzz bench demo format clean

all: test

deps:
	@./scripts/install-deps.sh

test: deps
	@cmake -S . -B $(BUILD)/test $(GENERATOR) $(LAUNCHER) -DCMAKE_BUILD_TYPE=Debug \
		-DDRIVEWIZ_SANITIZE=ON -DDRIVEWIZ_TESTS=ON -DDRIVEWIZ_BENCH=OFF >/dev/null
	@cmake --build $(BUILD)/test -j$(JOBS)
	@cd $(BUILD)/test && ctest --output-on-failure -j$(JOBS) --timeout 600
	@JOBS=$(JOBS) ./scripts/fuzz.sh smoke $(BUILD)/fuzz

# Every fuzz target for FUZZ_TIME seconds (clang); the corpus grows in $(BUILD)/fuzz/corpus,
# failing inputs are kept in $(BUILD)/fuzz/findings.
FUZZ_TIME   ?= 300
fuzz: deps
	@JOBS=$(JOBS) ./scripts/fuzz.sh run $(BUILD)/fuzz $(FUZZ_TIME)

bench: deps
	@cmake -S . -B $(BUILD)/release $(GENERATOR) $(LAUNCHER) -DCMAKE_BUILD_TYPE=Release \
		-DDRIVEWIZ_SANITIZE=OFF -DDRIVEWIZ_TESTS=OFF -DDRIVEWIZ_BENCH=ON >/dev/null
	@cmake --build $(BUILD)/release -j$(JOBS)
	@./scripts/run-benchmarks.sh $(BUILD)/release $(BUILD)/bench

demo: deps
	@cmake -S . -B $(BUILD)/release $(GENERATOR) $(LAUNCHER) -DCMAKE_BUILD_TYPE=Release \
		-DDRIVEWIZ_SANITIZE=OFF -DDRIVEWIZ_TESTS=OFF >/dev/null
	@cmake --build $(BUILD)/release -j$(JOBS)
	@./scripts/run-demo.sh $(BUILD)/release $(BUILD)/demo

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	rm -rf $(BUILD)
