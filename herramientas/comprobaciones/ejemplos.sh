# Los libros de ejemplo son, byte a byte, los que salen de sus textos.
set -eu
construccion=$1
temporal=$2
LC_ALL=C.UTF-8 awk -f herramientas/ventas.awk | cmp - ejemplos/ventas.tsv
herramientas/hacer-ejemplos "$construccion/console/marnel-consola" "$temporal"
for libro in ejemplos/*.mrn; do
  cmp "$libro" "$temporal/$(basename "$libro")"
done
[ "$(find ejemplos -name '*.mrn' | wc -l)" -eq "$(find "$temporal" -name '*.mrn' | wc -l)" ]
