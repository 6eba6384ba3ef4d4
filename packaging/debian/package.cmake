# The Debian package, made by tools/make_package.

# The licence in the form of a Debian field: indented, empty lines as dots, and without its title and years.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX REPLACE "^.*\nCopyright[^\n]*\n\n" "" licence "${licence}")
string(REGEX REPLACE "\n$" "" licence "${licence}")
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence " ${licence}")
configure_file(debian/copyright.in ${PROJECT_BINARY_DIR}/debian/copyright @ONLY)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tresmor)
set(CPACK_PACKAGE_VENDOR Tresmor)
set(CPACK_PACKAGE_CONTACT "The Tresmor developers <support@tresmor.example>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/doc_files.cmake)
set(CPACK_TRESMOR_DEBIAN ${CMAKE_CURRENT_SOURCE_DIR}/debian ${PROJECT_BINARY_DIR}/debian)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://tresmor.example)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The window's icons are a theme's, its letters a font's, and it opens files with the desktop's programs.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "breeze-icon-theme, fonts-dejavu-core | fonts-freefont-ttf, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_DEPENDS hicolor-icon-theme)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "finder of duplicate files that compares them byte by byte")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tresmor finds files with the same content, files with the same name, empty
files, and truncated copies of longer files, as a broken download leaves them.
Files are compared side by side, byte by byte: no checksum decides. A search
only reads. What you mark is moved to the trash, deleted, moved or copied at
your command, and nothing is ever overwritten.
.
The package holds tresmor, the program with a window, and tresmor-cli, the same
search for terminals, scripts and servers.")

include(CPack)
