# Paquetes de Debian 12 que necesita Marnel. Lo leen ./ejecutar y ./probar.
# shellcheck shell=bash disable=SC2034

# Para construir y usar el programa.
paquetes_programa=(
  g++
  cmake
  ninja-build
  qt6-base-dev
  qt6-base-dev-tools
  qt6-translations-l10n
  qt6-wayland
  libgl-dev
  fonts-dejavu-core
  fonts-symbola
  fonts-open-sans
  python3-markdown
)

# Además, para las pruebas.
paquetes_pruebas=(
  libgtest-dev
  libgmock-dev
  libbenchmark-dev
  locales
  clang-format
  desktop-file-utils
  appstream
  shared-mime-info
  man-db
)

# Además, para hacer el paquete.
paquetes_paquete=(
  dpkg-dev
  file
)

# Además, para pasar las pruebas con valgrind.
paquetes_valgrind=(
  valgrind
)

# Además, para medir la cobertura.
paquetes_cobertura=(
  gcovr
)

# Además, para los objetivos de libFuzzer.
paquetes_fuzz=(
  clang-14
  libclang-rt-14-dev
)
