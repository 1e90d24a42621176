# What depends on the platform is decided here and nowhere else.
#
#   KTZ_DESKTOP  linux (X11 and Wayland) or mac: the subfolder of each folder that has a side of its own for every desktop
#   KTZ_MIDI     the implementation of midi/MIDIPlatform.h that the editor links, ktz_midi_${KTZ_MIDI}

if(APPLE)
    set(KTZ_DESKTOP mac)
    set(midi coremidi)
else()
    set(KTZ_DESKTOP linux)
    set(midi alsa)
    find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
    find_package(X11 REQUIRED COMPONENTS xcb)
endif()

set(systems alsa coremidi simulated)
set(KTZ_MIDI ${midi} CACHE STRING "What the editor finds its ports with; simulated: there are none")
set_property(CACHE KTZ_MIDI PROPERTY STRINGS ${systems})
if(NOT KTZ_MIDI IN_LIST systems)
    message(FATAL_ERROR "KTZ_MIDI is ${KTZ_MIDI}, and none of: ${systems}")
elseif(KTZ_MIDI STREQUAL alsa)
    find_package(ALSA REQUIRED)
elseif(KTZ_MIDI STREQUAL coremidi)
    add_library(ktz_coremidi INTERFACE)
    target_link_libraries(ktz_coremidi INTERFACE "-framework CoreMIDI" "-framework CoreFoundation")
endif()
