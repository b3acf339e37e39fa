# layer_units(TARGET FOLDER stem...) adds include/FOLDER/<stem>.h and, where it exists, src/FOLDER/<stem>.cpp.
# A header with no source is a template, an interface or an enumeration.
function(layer_units target folder)
    # A source that appears later is found: its folder changes, and that configures again.
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder})
    foreach(stem IN LISTS ARGN)
        target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR}/include
                       FILES ${CMAKE_SOURCE_DIR}/include/${folder}/${stem}.h)
        if(EXISTS ${CMAKE_SOURCE_DIR}/src/${folder}/${stem}.cpp)
            target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/src/${folder}/${stem}.cpp)
        endif()
    endforeach()
endfunction()

# layer_pch(TARGET header...) precompiles what nearly every unit of a target includes; layer_pch(TARGET FROM other) takes
# what another target has precompiled. Only for speed, and only where VORK2D_PCH asks for it.
function(layer_pch target)
    if(NOT VORK2D_PCH)
        return()
    endif()
    if(ARGV1 STREQUAL "FROM")
        target_precompile_headers(${target} REUSE_FROM ${ARGV2})
    else()
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()
