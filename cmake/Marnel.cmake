# Avisos, sanitizadores y rutas de inclusión comunes a todos los destinos de Marnel.

add_library(marnel_opciones INTERFACE)
target_include_directories(marnel_opciones INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_features(marnel_opciones INTERFACE cxx_std_20)

# Los avisos son del proyecto: quien lo incluya como subproyecto no los hereda.
set(MARNEL_AVISOS -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 ve, al optimizar, solapes imposibles en la suma de un literal y un std::string.
  list(APPEND MARNEL_AVISOS -Wno-restrict)
endif()

if(MARNEL_SANITIZADORES)
  set(marnel_sanitizar -fsanitize=address,undefined -fsanitize=float-cast-overflow
                       -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(marnel_opciones INTERFACE ${marnel_sanitizar})
  target_link_options(marnel_opciones INTERFACE ${marnel_sanitizar})
endif()

# Lo que se entrega se defiende: un desborde de pila o de memoria se nota al momento, la tabla de
# funciones ajenas no se puede reescribir y el programa se carga cada vez en otra dirección.
include(CheckPIESupported)
check_pie_supported()
if(NOT MARNEL_SANITIZADORES)
  set(MARNEL_ENDURECER $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2> -fstack-protector-strong
                       -fstack-clash-protection)
  set(MARNEL_ENDURECER_ENLACE -Wl,-z,relro -Wl,-z,now)
endif()

# Los objetivos de fuzzing necesitan saber por qué caminos pasa todo el código que prueban.
if(MARNEL_FUZZ)
  # Seguir cada comparación cuesta un tercio del tiempo, y las palabras que importan ya están en el
  # diccionario.
  target_compile_options(marnel_opciones INTERFACE -fsanitize=fuzzer-no-link
                                                   -fno-sanitize-coverage=trace-cmp)
endif()

if(MARNEL_COBERTURA)
  target_compile_options(marnel_opciones INTERFACE --coverage)
  target_link_options(marnel_opciones INTERFACE --coverage)
endif()

# Añade una capa: biblioteca estática que solo ve las capas de debajo.
function(marnel_capa nombre)
  cmake_parse_arguments(CAPA "" "" "FUENTES;ENLACES" ${ARGN})
  add_library(${nombre} STATIC ${CAPA_FUENTES})
  target_compile_options(${nombre} PRIVATE ${MARNEL_AVISOS} ${MARNEL_ENDURECER})
  target_link_libraries(${nombre} PUBLIC marnel_opciones ${CAPA_ENLACES})
endfunction()

# Añade un programa sobre las capas dadas.
function(marnel_programa nombre)
  cmake_parse_arguments(PROG "" "" "FUENTES;ENLACES" ${ARGN})
  add_executable(${nombre} ${PROG_FUENTES})
  target_compile_options(${nombre} PRIVATE ${MARNEL_AVISOS} ${MARNEL_ENDURECER})
  target_link_options(${nombre} PRIVATE ${MARNEL_ENDURECER_ENLACE})
  target_link_libraries(${nombre} PRIVATE marnel_opciones ${PROG_ENLACES})
endfunction()
