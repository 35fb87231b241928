# Finds the three OpenCV libraries that TAVIX20 uses and makes the target TAVIX20::OpenCV of them.
#
# OpenCV's own package config is not used: Debian ships it only with libopencv-dev, which brings in
# Qt 5 and VTK. This file serves the build itself and, installed, the programs that link TAVIX20.

if(TARGET TAVIX20::OpenCV)
    return()
endif()

find_path(TAVIX_OPENCV_INCLUDE_DIR opencv2/core/core_c.h PATH_SUFFIXES opencv4)
set(_tavix_opencv_missing "")
set(_tavix_opencv_libraries "")
foreach(_module core imgproc imgcodecs)
    find_library(TAVIX_OPENCV_${_module}_LIBRARY opencv_${_module})
    if(TAVIX_OPENCV_${_module}_LIBRARY)
        list(APPEND _tavix_opencv_libraries ${TAVIX_OPENCV_${_module}_LIBRARY})
    else()
        list(APPEND _tavix_opencv_missing libopencv-${_module}-dev)
    endif()
    mark_as_advanced(TAVIX_OPENCV_${_module}_LIBRARY)
endforeach()
mark_as_advanced(TAVIX_OPENCV_INCLUDE_DIR)

if(_tavix_opencv_missing OR NOT TAVIX_OPENCV_INCLUDE_DIR)
    message(FATAL_ERROR "TAVIX20 needs OpenCV 4.6 with its C headers; missing: "
                        "${_tavix_opencv_missing} (headers: ${TAVIX_OPENCV_INCLUDE_DIR})")
endif()

add_library(TAVIX20::OpenCV INTERFACE IMPORTED)
set_target_properties(TAVIX20::OpenCV PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${TAVIX_OPENCV_INCLUDE_DIR}"
    INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${TAVIX_OPENCV_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES "${_tavix_opencv_libraries}")
