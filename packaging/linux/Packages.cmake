# What `cpack` makes of the installation: a package for Debian, one for RPM. Both carry the version's own day as their
# only time, whatever clock, folder and number of processors they were made with.

set(CPACK_PACKAGE_NAME ktz-jx-editor)
set(CPACK_PACKAGE_VENDOR "The KTZ-JX Editor Developers")
set(CPACK_PACKAGE_CONTACT ${ktz_contact})
set(CPACK_PACKAGE_DESCRIPTION "\
The KTZ-JX is a USB-MIDI controller with eight knobs, each in a ring of LEDs.
The editor finds it among the MIDI ports, shows what every knob sends, follows
the device as it is turned, sends each edit at once, and keeps settings in
files. A demo with a simulated device needs no MIDI.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_THREADS 1)
set(CPACK_PACKAGE_CHECKSUM SHA256)
configure_file(reproducible.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/reproducible.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_BINARY_DIR}/reproducible.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The loader has to know packed relocations, which no symbol tells: the tool that looks for dependencies misses it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.36)")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/${KTZ_PRIVATE_LIBRARIES})
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "alsa-utils")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_PACKAGE_LICENSE MIT)
set(CPACK_RPM_PACKAGE_DESCRIPTION ${CPACK_PACKAGE_DESCRIPTION})
set(CPACK_RPM_PACKAGE_GROUP "Applications/Multimedia")
set(CPACK_RPM_COMPRESSION_TYPE xz)
# The programs' own library is nobody else's.
set(CPACK_RPM_SPEC_MORE_DEFINE "\
%global __provides_exclude_from ^/usr/${KTZ_PRIVATE_LIBRARIES}/.*$
%global __requires_exclude ^libktz-jx-.*$
%global _build_id_links none
%global _buildhost localhost
%global use_source_date_epoch_as_buildtime 1
%global clamp_mtime_to_source_date_epoch 1")
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
    /usr/share/man /usr/share/man/man1 /usr/share/metainfo /usr/share/mime /usr/share/mime/packages
    /usr/share/dbus-1 /usr/share/dbus-1/services /usr/share/applications /usr/share/icons /usr/share/icons/hicolor
    /usr/share/bash-completion /usr/share/bash-completion/completions /usr/share/zsh /usr/share/zsh/site-functions
    /usr/share/fish /usr/share/fish/vendor_completions.d /usr/lib/udev /usr/lib/udev/rules.d /usr/lib/systemd
    /usr/lib/systemd/user)
foreach(size scalable ${ktz_icon_sizes})
    if(NOT size STREQUAL scalable)
        set(size ${size}x${size})
    endif()
    list(APPEND CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
        /usr/share/icons/hicolor/${size} /usr/share/icons/hicolor/${size}/apps)
endforeach()

include(CPack)
