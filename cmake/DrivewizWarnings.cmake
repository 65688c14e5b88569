# Warnings for the project's own targets; Qt and system headers are included as
# system headers so they do not drown ours.
function(drivewiz_set_warnings target)
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wno-unused-parameter>
    $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra>)
endfunction()
