# Lee el CSV de gcovr y escribe, por capa, el tanto por ciento de líneas y de ramas que pasan las
# pruebas. Acaba mal si una de las capas sin Qt en que se apoya todo se queda por debajo de la cota.
BEGIN {
  FS = ","
  minimo_lineas = 97
  minimo_ramas = 90
  split("model formula editing", acotadas, " ")
}

NR > 1 {
  capa = $1
  sub(/\/.*/, "", capa)
  lineas[capa] += $2
  lineas_pasadas[capa] += $3
  ramas[capa] += $5
  ramas_pasadas[capa] += $6
}

function tanto(pasadas, total) { return total > 0 ? 100 * pasadas / total : 100 }

END {
  printf "%-12s %s\n", "capa", "      líneas               ramas"
  fflush()
  orden = "LC_ALL=C sort"
  for (capa in lineas)
    printf "%-12s %7.2f %% de %5d %11.2f %% de %5d\n", capa,
      tanto(lineas_pasadas[capa], lineas[capa]), lineas[capa],
      tanto(ramas_pasadas[capa], ramas[capa]), ramas[capa] | orden
  close(orden)
  for (i in acotadas) {
    capa = acotadas[i]
    if (lineas[capa] == 0 || tanto(lineas_pasadas[capa], lineas[capa]) < minimo_lineas ||
        tanto(ramas_pasadas[capa], ramas[capa]) < minimo_ramas) {
      printf "%s no llega al %d %% de las líneas y al %d %% de las ramas\n", capa, minimo_lineas, minimo_ramas
      falla = 1
    }
  }
  exit falla
}
