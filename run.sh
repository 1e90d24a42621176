#!/bin/bash
# Installs what is missing, builds, and starts the demo: the editor with a simulated device.
# Without a display it takes a guided tour of the demo instead, and leaves screenshots and a log in build/tour/.
set -euo pipefail
cd "$(dirname "$0")"
. packaging/setup.sh

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    need_packages $packages_build $packages_manual
    build_preset release ktz-jx-demo ktz_manual
    exec build/release/bin/ktz-jx-demo
fi

echo "There is no display: the demo runs on a virtual one, and a guided tour drives it."
need_packages $packages_build $packages_manual $packages_display
build_preset release ktz-jx-demo ktz_manual
exec tests/tour/run build/release build/tour
