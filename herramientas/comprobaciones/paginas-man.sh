# Las páginas de manual se componen sin avisos y cuentan todas las órdenes, opciones y estados que
# cuenta la ayuda del programa. El completado de bash, también.
set -eu
construccion=$1
temporal=$2
consola=$construccion/console/marnel-consola
estado=0
mal() {
  echo "$*"
  estado=1
}

for pagina in empaquetado/man/*/*.1; do
  avisos=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$pagina" 2>&1 >/dev/null)
  [ -z "$avisos" ] || mal "$pagina: $avisos"
done

"$consola" --ayuda >"$temporal/ayuda"
mapfile -t ordenes < <(sed -n 's/^marnel-consola \([a-z][a-z]*\).*/\1/p' "$temporal/ayuda")
[ ${#ordenes[@]} -ge 6 ] || mal "la ayuda no enumera las órdenes"
opciones_de() { # opciones_de ORDEN
  "$consola" "$1" --ayuda | sed -n 's/^  \(--[a-z-]*\).*/\1/p'
}
for idioma in es en; do
  pagina=$temporal/$idioma
  sed 's/\\-/-/g' "empaquetado/man/$idioma/marnel-consola.1" >"$pagina"
  for orden in "${ordenes[@]}"; do
    grep -q "^\.B marnel-consola $orden\$" "$pagina" || mal "$idioma: falta la orden $orden"
    for opcion in $(opciones_de "$orden"); do
      grep -q -e "$opcion\b" "$pagina" || mal "$idioma: falta la opción $opcion de $orden"
    done
  done
  for numero in 0 1 2 3 4; do
    grep -qx "\.B $numero" "$pagina" || mal "$idioma: falta el estado de salida $numero"
  done
done
grep -q '4 falta' "$temporal/ayuda" || mal "la ayuda no cuenta los estados de salida"

# shellcheck source=empaquetado/marnel-consola.bash
source empaquetado/marnel-consola.bash
PATH=$(dirname "$consola"):$PATH
completar() { # completar PALABRAS...: lo que se ofrece para la última
  COMP_WORDS=(marnel-consola "$@")
  COMP_CWORD=$#
  _marnel_consola
  printf '%s\n' "${COMPREPLY[@]}"
}
for orden in "${ordenes[@]}"; do
  completar "" | grep -qx "$orden" || mal "completado: falta la orden $orden"
  for opcion in $(opciones_de "$orden"); do
    completar "$orden" -- | grep -qx -e "$opcion" || mal "completado: falta $opcion de $orden"
  done
  for opcion in $(completar "$orden" --); do
    [ "$opcion" = --ayuda ] || opciones_de "$orden" | grep -qx -e "$opcion" ||
      mal "completado: $opcion no es de $orden"
  done
done
[ "$(completar mostrar ejemplos/not)" = ejemplos/notas.mrn ] || mal "completado: los libros"
[ "$(completar funciones promedio.)" = PROMEDIO.SI ] || mal "completado: las funciones"
[ "$(completar imprimir --papel c)" = carta ] || mal "completado: los papeles"
exit $estado
