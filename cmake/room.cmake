# A room is one folder of src/ with its library, its view for #include and its test binary.
#
#   tonquay_room(disc USES state platform)
#
# USES is the truth about what a room may see. Linking alone refuses nothing, so each room is compiled against a
# view that holds its own headers only (rooms/disc/disc -> src/disc), and sees the views of what it uses, nothing else.
# A room may use only rooms that are declared before it, so the house has no circle.
#
# LIBRARIES are outside libraries for the room's own sources; they are not handed on to rooms above.
function(tonquay_room name)
    cmake_parse_arguments(ROOM "" "" "USES;LIBRARIES" ${ARGN})
    string(REPLACE "/" "_" target room_${name})
    set(view ${CMAKE_BINARY_DIR}/rooms/${name})
    get_filename_component(folder ${view}/${name} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${name} ${view}/${name} SYMBOLIC)

    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    file(GLOB resources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.qrc)
    if(sources)
        add_library(${target} STATIC ${sources} ${resources})
        if(resources)
            set_target_properties(${target} PROPERTIES AUTORCC ON)
        endif()
        set(scope PUBLIC)
        target_link_libraries(${target} PRIVATE ${ROOM_LIBRARIES})
    else()
        add_library(${target} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(${target} ${scope} ${view})
    foreach(used IN LISTS ROOM_USES)
        string(REPLACE "/" "_" used_target room_${used})
        if(NOT TARGET ${used_target})
            message(FATAL_ERROR "The room '${name}' uses '${used}', which is not declared before it.")
        endif()
        target_link_libraries(${target} ${scope} ${used_target})
    endforeach()
    string(REPLACE ";" " " uses "${ROOM_USES}")
    string(STRIP "${name}: ${uses}" line)
    set_property(GLOBAL APPEND PROPERTY TONQUAY_HOUSE "${line}")
    set_property(GLOBAL APPEND PROPERTY TONQUAY_ROOMS ${name})
endfunction()

# The test binary of a room: it links the room and the test support, so it cannot lean on a room above.
function(tonquay_room_tests name)
    cmake_parse_arguments(ROOM "" "" "LIBRARIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
    if(NOT sources)
        return()
    endif()
    string(REPLACE "/" "_" flat ${name})
    add_executable(test_${flat} ${sources})
    target_link_libraries(test_${flat} PRIVATE room_${flat} test_support ${ROOM_LIBRARIES} GTest::gmock GTest::gtest_main)
    target_compile_definitions(test_${flat} PRIVATE TONQUAY_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    add_test(NAME ${name} COMMAND test_${flat})
    set_tests_properties(${name} PROPERTIES TIMEOUT 120)
endfunction()

# Writes the rooms, each with what it uses, one line a room, from the ground up.
function(tonquay_print_house file)
    get_property(house GLOBAL PROPERTY TONQUAY_HOUSE)
    list(JOIN house "\n" text)
    file(WRITE ${file} "${text}\n")
endfunction()
