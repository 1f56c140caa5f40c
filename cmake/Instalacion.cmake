# Qué se instala y dónde, y el paquete de Debian que sale de ello con "cpack -G DEB".

include(GNUInstallDirs)
set(marnel_empaquetado ${PROJECT_SOURCE_DIR}/empaquetado)
set(marnel_id org.quenda.Marnel)

install(TARGETS marnel-consola RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${marnel_empaquetado}/marnel-consola.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME marnel-consola)

# Las páginas de manual se instalan comprimidas, como las espera Debian.
function(marnel_comprimir origen destino carpeta nombre)
  add_custom_command(OUTPUT ${destino}
    COMMAND gzip -9nc ${origen} > ${destino}
    DEPENDS ${origen} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY MARNEL_COMPRIMIDOS ${destino})
  install(FILES ${destino} DESTINATION ${carpeta} RENAME ${nombre})
endfunction()

set(marnel_programas marnel-consola)
if(MARNEL_INTERFAZ)
  list(APPEND marnel_programas marnel marnel-miniatura)
endif()
foreach(programa IN LISTS marnel_programas)
  marnel_comprimir(${marnel_empaquetado}/man/es/${programa}.1
    ${PROJECT_BINARY_DIR}/${programa}.es.1.gz ${CMAKE_INSTALL_MANDIR}/es/man1 ${programa}.1.gz)
  marnel_comprimir(${marnel_empaquetado}/man/en/${programa}.1
    ${PROJECT_BINARY_DIR}/${programa}.en.1.gz ${CMAKE_INSTALL_MANDIR}/man1 ${programa}.1.gz)
endforeach()

if(MARNEL_INTERFAZ)
  install(TARGETS marnel marnel-miniatura RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS marnel-impresora RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/marnel)
  install(FILES ${marnel_empaquetado}/${marnel_id}.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${marnel_empaquetado}/quenda-marnel.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${marnel_empaquetado}/${marnel_id}.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${marnel_empaquetado}/marnel.thumbnailer
    DESTINATION ${CMAKE_INSTALL_DATADIR}/thumbnailers)
  set(iconos ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  foreach(lado 16 32 48 64)
    install(FILES ${PROJECT_SOURCE_DIR}/ui/recursos/icono-${lado}.png
      DESTINATION ${iconos}/${lado}x${lado}/apps RENAME ${marnel_id}.png)
  endforeach()
  install(FILES ${PROJECT_SOURCE_DIR}/ui/recursos/icono.png
    DESTINATION ${iconos}/256x256/apps RENAME ${marnel_id}.png)
  install(FILES ${PROJECT_SOURCE_DIR}/ui/recursos/icono.svg
    DESTINATION ${iconos}/scalable/apps RENAME ${marnel_id}.svg)
  foreach(lado 22 24 128 512)
    install(FILES ${marnel_empaquetado}/iconos/marnel-${lado}.png
      DESTINATION ${iconos}/${lado}x${lado}/apps RENAME ${marnel_id}.png)
  endforeach()
  foreach(lado 16 22 24 32 48 64 128 256)
    install(FILES ${marnel_empaquetado}/iconos/libro-${lado}.png
      DESTINATION ${iconos}/${lado}x${lado}/mimetypes RENAME application-x-marnel.png)
  endforeach()
  install(FILES ${marnel_empaquetado}/iconos/libro.svg
    DESTINATION ${iconos}/scalable/mimetypes RENAME application-x-marnel.svg)
endif()

include(cmake/Manual.cmake)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/ejemplos DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/marnel
  FILES_MATCHING PATTERN "*.mrn")
install(FILES ${marnel_empaquetado}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/marnel)
marnel_comprimir(${marnel_empaquetado}/changelog ${PROJECT_BINARY_DIR}/changelog.gz
  ${CMAKE_INSTALL_DATADIR}/doc/marnel changelog.gz)
get_property(comprimidos GLOBAL PROPERTY MARNEL_COMPRIMIDOS)
add_custom_target(marnel_comprimidos ALL DEPENDS ${comprimidos})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME marnel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR Velora)
set(CPACK_PACKAGE_CONTACT "Velora <soporte@velora.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "spreadsheet with Spanish formulas")
set(CPACK_PACKAGE_DESCRIPTION "Marnel opens, edits and recalculates workbooks with a Spanish
interface and a Spanish formula language. The program marnel-consola
works without a screen.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-translations-l10n, fonts-dejavu-core, fonts-symbola")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-open-sans, xdg-utils, qt6-wayland, qt6-gtk-platformtheme")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "fonts-noto-core")
include(CPack)
