# The two commands of the README, and a few more for developers. Every target installs
# what is missing first, so a fresh Debian 12 machine needs nothing else.

BUILD_DIR ?= build
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= 2
SAMPLE ?= examples/host/samples/welcome.html
SCREENSHOT ?= $(BUILD_DIR)/vantry-editor.png
ENGINE_ENV = QTWEBENGINE_DISABLE_SANDBOX=1 QTWEBENGINE_CHROMIUM_FLAGS=--disable-gpu
CMAKE_ARGS ?=
# CI builds with warnings as errors; an existing build folder is switched over too.
ifeq ($(CI),true)
CMAKE_ARGS += -DVANTRY_WARNINGS_AS_ERRORS=ON
endif

.PHONY: all deps configure build run test bench format clean

all: build

deps:
	@bash tools/install-deps.sh

$(BUILD_DIR)/build.ninja: | deps
	cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_ARGS)

configure: deps $(BUILD_DIR)/build.ninja
ifeq ($(CI),true)
	cmake -S . -B $(BUILD_DIR) $(CMAKE_ARGS)
endif

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Opens the demo host on the sample page. Without a display it renders one screenshot
# instead and says where it went.
run: build
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then \
		$(ENGINE_ENV) $(BUILD_DIR)/examples/host/vantry-editor $(SAMPLE); \
	else \
		echo "No display found: rendering the demo host offscreen."; \
		QT_QPA_PLATFORM=offscreen $(ENGINE_ENV) \
			$(BUILD_DIR)/examples/host/vantry-editor --screenshot $(SCREENSHOT) $(SAMPLE); \
	fi

test: build
	cd $(BUILD_DIR) && ctest --output-on-failure --timeout 600

bench: build
	cmake --build $(BUILD_DIR) --target bench

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD_DIR)
