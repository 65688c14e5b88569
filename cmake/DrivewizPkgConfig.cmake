# A pkg-config file for programs built against this build tree: include folders, the
# library, and an RPATH to its folder, so such a program runs without LD_LIBRARY_PATH.
# It lies in <build>/pkgconfig/drivewiz.pc:
#   cc host.c $(PKG_CONFIG_PATH=<build>/pkgconfig pkg-config --cflags --libs drivewiz)
function(drivewiz_write_build_pkgconfig target)
  set(libdir "$<TARGET_FILE_DIR:${target}>")
  set(sanitize "")
  if(DRIVEWIZ_SANITIZE)
    # The library of a sanitizer build needs the sanitizer runtimes in the program too.
    set(sanitize " -fsanitize=address,undefined")
  endif()
  file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/pkgconfig/drivewiz.pc" CONTENT
"Name: drivewiz
Description: ${PROJECT_DESCRIPTION} (build tree)
Version: ${PROJECT_VERSION}
Cflags: -I${PROJECT_SOURCE_DIR}/include -I${PROJECT_SOURCE_DIR}/src -DQT_NO_KEYWORDS
Libs: -L${libdir} -Wl,-rpath,${libdir} -ldrivewiz${sanitize}
")
endfunction()
