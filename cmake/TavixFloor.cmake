# tavix_add_floor(NAME [SOURCES ...] [HEADERS ...] [INTERNAL ...] [ON floor ...] [LIBRARIES ...])
#
# Declares the folder NAME as one floor of the house: an object library that sees the floors it
# stands ON and nothing above. Each floor's headers are reached only through an include root of its
# own (build/.../floors/NAME/TAVIX20/NAME, a link to the folder), so an include that runs upwards
# does not compile. HEADERS are installed; INTERNAL headers are not.

function(tavix_link_folder root name)
    file(MAKE_DIRECTORY "${root}/TAVIX20")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${name}" "${root}/TAVIX20/${name}" SYMBOLIC)
endfunction()

function(tavix_add_floor name)
    cmake_parse_arguments(PARSE_ARGV 1 FLOOR "" "" "SOURCES;HEADERS;INTERNAL;ON;LIBRARIES")

    set(root "${PROJECT_BINARY_DIR}/floors/${name}")
    tavix_link_folder("${root}" ${name})

    add_library(tavix_${name} OBJECT ${FLOOR_SOURCES} ${FLOOR_HEADERS} ${FLOOR_INTERNAL})
    target_include_directories(tavix_${name} PUBLIC "${root}")
    list(TRANSFORM FLOOR_ON PREPEND tavix_)
    target_link_libraries(tavix_${name} PUBLIC tavix_settings ${FLOOR_ON} ${FLOOR_LIBRARIES})
    set_target_properties(tavix_${name} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)

    set_property(GLOBAL APPEND PROPERTY TAVIX_FLOORS ${name})
    install(FILES ${FLOOR_HEADERS} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/TAVIX20/${name}")
endfunction()
