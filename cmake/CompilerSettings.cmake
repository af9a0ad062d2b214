# Settings that every target of the project shares, as one interface target: `velmo_settings`.

add_library(velmo_settings INTERFACE)
target_compile_features(velmo_settings INTERFACE cxx_std_20)

# The same samples on every processor: a product is rounded before it is added, also where the processor could do both
# at once.
target_compile_options(velmo_settings INTERFACE -ffp-contract=off)

# Host callbacks are functions of many shapes behind one pointer type, so casting them is the API's own way. g++ 12 sees
# an overlap in its own std::string wherever a literal and a string are added; g++ 13 no longer does.
target_compile_options(velmo_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wno-cast-function-type
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  $<$<BOOL:${VELMO_WERROR}>:-Werror>)

# The compiler's run-time is linked statically, so that a plug-in needs no DLL that users do not have.
if(MINGW)
  target_link_options(velmo_settings INTERFACE -static)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/Hardening.cmake)
target_link_libraries(velmo_settings INTERFACE velmo_hardening)

if(VELMO_SANITIZE)
  target_compile_options(velmo_settings INTERFACE
    -fsanitize=${VELMO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(velmo_settings INTERFACE -fsanitize=${VELMO_SANITIZE})
endif()

# Makes `target` one of the project's libraries or programs: common settings, hidden symbols, position independence
# (the static libraries end up in a plug-in), no compiler extensions.
function(velmo_target target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:velmo_settings>)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL EXECUTABLE)
    velmo_bind_at_load(${target})
  endif()
endfunction()
