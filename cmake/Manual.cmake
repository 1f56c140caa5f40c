# El manual en HTML, si hay con qué hacerlo: python3-markdown. Sin él se construye lo demás.

execute_process(COMMAND /usr/bin/python3 -c "import markdown"
  RESULT_VARIABLE marnel_sin_markdown OUTPUT_QUIET ERROR_QUIET)
if(marnel_sin_markdown)
  message(STATUS "Falta python3-markdown: no se hace el manual en HTML")
  return()
endif()

file(GLOB marnel_paginas CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/docs/manual/*.md ${PROJECT_SOURCE_DIR}/docs/manual/imagenes/*.png)
set(marnel_manual ${PROJECT_BINARY_DIR}/manual)
add_custom_command(OUTPUT ${marnel_manual}/index.html
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${marnel_manual}
  COMMAND ${PROJECT_SOURCE_DIR}/herramientas/hacer-manual ${marnel_manual}
  DEPENDS
    ${marnel_paginas}
    ${PROJECT_SOURCE_DIR}/herramientas/hacer-manual
    ${PROJECT_SOURCE_DIR}/empaquetado/manual/plantilla.html
    ${PROJECT_SOURCE_DIR}/empaquetado/manual/estilo.css
  VERBATIM)
add_custom_target(marnel_manual ALL DEPENDS ${marnel_manual}/index.html)
if(TARGET marnel)
  # F1 lo busca junto a lo construido.
  add_dependencies(marnel marnel_manual)
endif()
install(DIRECTORY ${marnel_manual}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/marnel/manual)
