# Top-level entry points. Each target prepares a fresh Debian 12 machine itself.
BUILD    ?= build
APPDIR   := $(BUILD)/bin
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo

.PHONY: all deps configure build run test crashtest demo bench clean

all: build

deps:
	@scripts/install-deps.sh

$(BUILD)/CMakeCache.txt: | deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

configure: deps $(BUILD)/CMakeCache.txt

build: configure
	cmake --build $(BUILD) -j$$(nproc)

run: build
	@if [ -z "$$DISPLAY" ] && [ -z "$$WAYLAND_DISPLAY" ]; then \
	  echo "No display found: starting under a virtual X server (xvfb-run)."; \
	  xvfb-run -a $(APPDIR)/normaris; \
	else \
	  $(APPDIR)/normaris; \
	fi

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen NORMARIS_NO_OPEN=1 ctest --output-on-failure -j2

# Not part of test: kills the CLI at random moments of every multi-row step.
crashtest: build
	scripts/crashtest.sh $(APPDIR) $${RUNS:-50}

demo: build
	scripts/demo.sh $(APPDIR)

bench: build
	cmake --build $(BUILD) --target benchmarks -j$$(nproc)
	@for b in $(BUILD)/bench/bench_*; do [ -x "$$b" ] && "$$b"; done; true

clean:
	rm -rf $(BUILD)
