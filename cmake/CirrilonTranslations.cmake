# cirrilon_translations(program): compiles translations/cirrilonv3_*.ts into languages/ beside the
# program, with the picture of each language for the menu and Qt's own texts as qt_*.qm.
function(cirrilon_translations program)
    file(GLOB texts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/translations/cirrilonv3_*.ts)
    set(folder ${PROJECT_BINARY_DIR}/languages)
    file(MAKE_DIRECTORY ${folder})
    get_target_property(lrelease Qt5::lrelease IMPORTED_LOCATION)
    get_filename_component(qt_prefix ${lrelease} DIRECTORY)
    find_path(CIRRILON_QT_TRANSLATIONS qtbase_de.qm
        HINTS ${qt_prefix}/../translations /usr/share/qt5/translations
        ${qt_prefix}/../share/qt5/translations NO_CMAKE_FIND_ROOT_PATH)
    foreach(text IN LISTS texts)
        string(REGEX REPLACE ".*/cirrilonv3_(.*)\\.ts$" "\\1" language ${text})
        set(compiled ${folder}/cirrilonv3_${language}.qm)
        add_custom_command(OUTPUT ${compiled}
            COMMAND Qt5::lrelease -silent ${text} -qm ${compiled}
            DEPENDS ${text} COMMENT "Translation ${language}" VERBATIM)
        list(APPEND outputs ${compiled})
        set(copies ${PROJECT_SOURCE_DIR}/translations/${language}.png ${folder}/${language}.png)
        # Without them the buttons of Qt's own dialogs stay English.
        if(EXISTS ${CIRRILON_QT_TRANSLATIONS}/qtbase_${language}.qm)
            list(APPEND copies ${CIRRILON_QT_TRANSLATIONS}/qtbase_${language}.qm ${folder}/qt_${language}.qm)
        endif()
        while(copies)
            list(POP_FRONT copies from to)
            add_custom_command(OUTPUT ${to} COMMAND ${CMAKE_COMMAND} -E copy_if_different ${from} ${to}
                COMMAND ${CMAKE_COMMAND} -E touch ${to} DEPENDS ${from} VERBATIM)
            list(APPEND outputs ${to})
        endwhile()
    endforeach()
    add_custom_target(translations ALL DEPENDS ${outputs})
    add_dependencies(${program} translations)
endfunction()
