# What a Mac's bundle holds beside program and manual. It can be made everywhere, so that it is tested everywhere.
set(ktz_plist ${PROJECT_BINARY_DIR}/packaging/mac/Info.plist)
configure_file(${CMAKE_CURRENT_LIST_DIR}/Info.plist.in ${ktz_plist} @ONLY)

set(ktz_icns ${PROJECT_BINARY_DIR}/packaging/mac/ktz-jx-editor.icns)
set(ktz_icon_pngs)
foreach(size IN LISTS KTZ_ICON_SIZES)
    list(APPEND ktz_icon_pngs ${KTZ_ICON_FOLDER}/ktz-jx-editor-${size}.png)
endforeach()
add_custom_command(
    OUTPUT ${ktz_icns}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/make_icns.py ${ktz_icns} ${ktz_icon_pngs}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/make_icns.py ktz_icons ${ktz_icon_pngs}
    COMMENT "Making the Mac's icon")
add_custom_target(ktz_icns ALL DEPENDS ${ktz_icns})
