# Funciones comunes de ./ejecutar y ./probar: instalar lo que falte y construir.
# shellcheck shell=bash

raiz=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=herramientas/paquetes.sh
source "$raiz/herramientas/paquetes.sh"

decir() { printf '%s\n' "$*" >&2; }

fallar() {
  decir "error: $*"
  exit 1
}

como_root() {
  if [ "$(id -u)" -eq 0 ]; then
    env DEBIAN_FRONTEND=noninteractive "$@"
  elif command -v sudo >/dev/null; then
    sudo env DEBIAN_FRONTEND=noninteractive "$@"
  else
    fallar "hace falta ser root, o tener sudo, para: $*"
  fi
}

# Instala los paquetes dados que falten, y dice cuáles.
instalar() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    decir "Este sistema no usa paquetes de Debian: se supone instalado lo necesario."
    return
  fi
  local instalados faltan=() paquete
  instalados=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null)
  for paquete in "$@"; do
    grep -qx "installed $paquete" <<<"$instalados" || faltan+=("$paquete")
  done
  [ ${#faltan[@]} -gt 0 ] || return 0
  decir "Se instalan: ${faltan[*]}"
  {
    como_root apt-get update -q &&
      como_root apt-get install -q -y --no-install-recommends "${faltan[@]}"
  } >&2 || fallar "no se pudieron instalar: ${faltan[*]}"
}

# Genera la configuración regional es_ES.UTF-8 si falta.
generar_locale() {
  ! locale -a 2>/dev/null | grep -qix 'es_ES\.utf-\?8' || return 0
  decir "Se genera la configuración regional es_ES.UTF-8"
  como_root localedef -i es_ES -f UTF-8 es_ES.UTF-8 >&2 || fallar "no se pudo generar es_ES.UTF-8"
}

# Compilaciones a la vez: una por procesador y ninguna sin un gigabyte de memoria libre.
trabajos() {
  local procesadores memoria
  procesadores=$(nproc)
  memoria=$(awk '/^MemAvailable/ { print int($2 / 1048576) }' /proc/meminfo)
  [ "$memoria" -ge 1 ] || memoria=1
  echo $((procesadores < memoria ? procesadores : memoria))
}

# construir PRESET OPCIONES_DE_CMAKE -- OBJETIVOS: configura la primera vez y construye.
construir() {
  local preset=$1 opciones=() dir="$raiz/build/$1"
  shift
  while [ $# -gt 0 ] && [ "$1" != -- ]; do
    opciones+=("$1")
    shift
  done
  [ $# -eq 0 ] || shift
  # Con rutas relativas, lo compilado en una copia del repositorio sirve en otra.
  export CCACHE_BASEDIR=$raiz CCACHE_NOHASHDIR=1
  if [ ! -f "$dir/build.ninja" ]; then
    if command -v ccache >/dev/null; then
      opciones+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    (cd "$raiz" && cmake --preset "$preset" "${opciones[@]}") >&2 ||
      fallar "no se pudo configurar ($preset)"
  fi
  ninja -C "$dir" -j"$(trabajos)" "$@" >&2 || fallar "no se pudo construir ($preset)"
}
