# Compiler settings shared by every target of the project.

# One interface target carries them, so that they never leak into what an outside project sees.
add_library(orvix_build INTERFACE)
target_compile_features(orvix_build INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)

target_compile_options(orvix_build INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual -Wcast-align
  -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual -Wdouble-promotion -Wundef
  -Wimplicit-fallthrough -Wextra-semi -Wunused)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(orvix_build INTERFACE -Wduplicated-cond -Wduplicated-branches -Wlogical-op)
  # gcc 12 sees overlaps in std::string's operator+ that are not there.
  target_compile_options(orvix_build INTERFACE -Wno-restrict)
endif()
if(ORVIX_WARNINGS_AS_ERRORS)
  target_compile_options(orvix_build INTERFACE -Werror)
endif()

if(WIN32)
  # The compiler's runtime lies beside the programs and libraries: one for all of them, or exceptions and streams would
  # not cross from one to the other.
  foreach(library libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${library}.dll
      OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    if(NOT IS_ABSOLUTE "${file}")
      find_file(${library}_dll ${library}.dll REQUIRED PATHS "${CMAKE_FIND_ROOT_PATH}/lib" NO_CMAKE_FIND_ROOT_PATH)
      set(file "${${library}_dll}")
    endif()
    file(COPY "${file}" DESTINATION "${PROJECT_BINARY_DIR}/bin")
    list(APPEND ORVIX_RUNTIME_LIBRARIES "${file}")
  endforeach()
endif()

# Where the sources lie is nobody's business: two builds of the same sources give the same bytes.
target_compile_options(orvix_build INTERFACE "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build"
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")

if(ORVIX_SANITIZE)
  # Undefined behaviour must end the process, or a test would pass over it.
  set(flags -fsanitize=${ORVIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(orvix_build INTERFACE ${flags})
  target_link_options(orvix_build INTERFACE ${flags})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(orvix_build INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(ORVIX_COVERAGE)
  target_compile_options(orvix_build INTERFACE --coverage)
  target_link_options(orvix_build INTERFACE --coverage)
endif()

# Options of the mathematics. The order of floating-point operations is part of what its functions promise: results are
# the same to the last bit whatever compiler, optimisation and processor. So nothing may be reassociated (fast-math) or
# fused into a multiply-add (contraction), which changes last bits where the processor has one, and no compiler may turn
# pow(10, x) into an exp10(x) that rounds otherwise. errno tells nobody anything there; without it a square root is one
# instruction, and a sine and a cosine of one angle are computed together.
set(ORVIX_EXACT_MATHEMATICS -fno-fast-math -ffp-contract=off -fno-builtin-pow -fno-math-errno)
if(NOT WIN32)
  # Half of the work is calls of the C library: they go there without a stop.
  set(ORVIX_MATHEMATICS_CALLS -fno-plt)
endif()

# orvix_library(NAME EXPORT_DEFINITION): an object library NAME_objects that takes the sources, the shared library NAME
# made of it, and the alias OrvixGsl::NAME. Tests of private parts link the objects; everybody else the shared library.
function(orvix_library name building)
  add_library(${name}_objects OBJECT)
  add_library(${name} SHARED $<TARGET_OBJECTS:${name}_objects>)
  add_library(OrvixGsl::${name} ALIAS ${name})

  set_target_properties(${name}_objects PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_definitions(${name}_objects PRIVATE ${building})
  target_include_directories(${name}_objects PUBLIC "${PROJECT_SOURCE_DIR}/include"
    PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/source")
  target_link_libraries(${name}_objects PRIVATE orvix_build)

  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME orvix${name} EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  target_compile_features(${name} INTERFACE cxx_std_20)
  target_include_directories(${name} INTERFACE
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  target_link_libraries(${name} PRIVATE "$<BUILD_INTERFACE:orvix_build>")
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "")
  else()
    # Relative relocations packed (RELR) and symbols bound inside the library keep loading cheap.
    target_link_options(${name} PRIVATE -Wl,-Bsymbolic-functions -Wl,-z,now -Wl,--as-needed
      "-Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map")
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/exports.map")
    if(NOT ORVIX_SANITIZE)
      target_link_options(${name} PRIVATE -Wl,--no-undefined -Wl,-z,pack-relative-relocs)
    endif()
  endif()
endfunction()
