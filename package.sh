#!/bin/bash
# Installs what is missing, builds, and makes in build/packages/: .deb, .rpm, an archive of the sources, and SHA256SUMS
# over all three. The same commit gives the same bytes, whenever and wherever it is built.
set -euo pipefail
cd "$(dirname "$0")"
. packaging/setup.sh

need_packages $packages_build $packages_manual $packages_package
build_preset package
packages=build/packages
rm -rf $packages
cpack --preset deb
cpack --preset rpm
# What cpack works with, and the sums that it writes for each file.
rm -rf $packages/_CPack_Packages $packages/*.sha256

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/package/CMakeCache.txt)
if git rev-parse --git-dir >/dev/null 2>&1; then
    # What is committed; an archive's times are the commit's.
    git archive --format=tar --prefix="ktz-jx-editor-$version/" HEAD | xz -9 --threads=1 \
        >"$packages/ktz-jx-editor-$version.tar.xz"
else
    echo "These sources are no git repository: there is no archive of them among the packages." >&2
fi
(cd $packages && sha256sum ktz-jx-editor* | tee SHA256SUMS)
