# The library's layers, each its own target, lowest first: the document model (jsonxx), the records
# and typed values (model), the HTTPS transport, the requests and answer readers, the facade. A layer
# reaches only its own folder and, through target_link_libraries, the layers below it, so that a
# header included from above does not compile. The shared library is the objects of all of them.
function(zr_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "FOLDERS;SHOWN;BELOW")
  set(sources)
  foreach(folder IN LISTS layer_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  if(sources)
    add_library(${name} OBJECT ${sources})
    set(scope PRIVATE)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  foreach(folder IN LISTS layer_FOLDERS)
    # A folder the layers above may include from is shown to them; the others stay its own.
    if(folder IN_LIST layer_SHOWN)
      if(sources)
        target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${folder}>)
      else()
        target_include_directories(${name} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${folder}>)
      endif()
    else()
      target_include_directories(${name} ${scope} $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${folder}>)
    endif()
  endforeach()
  if(sources)
    target_link_libraries(${name} PUBLIC ${layer_BELOW})
  else()
    target_link_libraries(${name} INTERFACE ${layer_BELOW})
  endif()
endfunction()

zr_layer(zr_model FOLDERS model SHOWN model BELOW jsonxx ZrLib XoUtils Boost::headers)
# HTTP methods and operation types: the requests' words, which the transport reads too.
zr_layer(zr_request_vocabulary FOLDERS requests/vocabulary SHOWN requests/vocabulary)
zr_layer(zr_transport FOLDERS transport SHOWN transport BELOW zr_model zr_request_vocabulary zrlibcurl)
zr_layer(zr_requests FOLDERS requests SHOWN requests BELOW zr_transport)
# The frames, the operation log and the session's cookie files serve the facade alone; users reach
# ZrManageHuawei.h through the shared library.
zr_layer(zr_facade FOLDERS facade facade/private BELOW zr_requests)
# Number conversions of the change lists: lets the compiler inline the rounding of long doubles.
set_source_files_properties(model/ArrayNumbers.cpp PROPERTIES COMPILE_OPTIONS -fno-math-errno)

# For tests (and the benchmarks and fuzzers that drive internals): every folder of the library.
add_library(zr_internal_headers INTERFACE)
foreach(folder IN ITEMS facade facade/private requests requests/vocabulary transport model ZRRemoteFile)
  target_include_directories(zr_internal_headers INTERFACE ${PROJECT_SOURCE_DIR}/${folder})
endforeach()
