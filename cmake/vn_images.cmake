# Pictures painted at build time by loxmere_imagegen (tools/imagegen).
#
# vn_add_generated_images(target QRC file.qrc.in [FONTS file.ttf...])
#
# The resource file lists every picture; each listed .png is painted into the
# resource file's folder in the build tree, and the listed fonts are copied
# there. The compiled resource goes into `target`; its name is the resource
# file's base name, for Q_INIT_RESOURCE.
include_guard(GLOBAL)

function(vn_add_generated_images target)
    cmake_parse_arguments(G "" "QRC" "FONTS" ${ARGN})
    get_filename_component(qrc_name ${G_QRC} NAME)
    string(REGEX REPLACE "\\.in$" "" qrc_name ${qrc_name})
    get_filename_component(base ${qrc_name} NAME_WE)
    set(out_dir ${CMAKE_CURRENT_BINARY_DIR}/${base})
    configure_file(${G_QRC} ${out_dir}/${qrc_name} COPYONLY)

    set(font_args)
    foreach(font ${G_FONTS})
        get_filename_component(font_name ${font} NAME)
        configure_file(${font} ${out_dir}/${font_name} COPYONLY)
        list(APPEND font_args --font ${font})
    endforeach()

    file(STRINGS ${G_QRC} lines REGEX "<file[^>]*>[^<]+\\.png</file>")
    set(names)
    set(outputs)
    foreach(line ${lines})
        string(REGEX REPLACE ".*<file[^>]*>([^<]+)</file>.*" "\\1" name "${line}")
        list(APPEND names ${name})
        list(APPEND outputs ${out_dir}/${name})
    endforeach()

    add_custom_command(OUTPUT ${outputs}
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
            $<TARGET_FILE:loxmere_imagegen> ${font_args} ${out_dir} ${names}
        DEPENDS loxmere_imagegen ${G_QRC} ${G_FONTS}
        COMMENT "Painting the pictures of ${base}"
        VERBATIM)
    qt5_add_resources(rcc_sources ${out_dir}/${qrc_name})
    target_sources(${target} PRIVATE ${rcc_sources})
endfunction()
