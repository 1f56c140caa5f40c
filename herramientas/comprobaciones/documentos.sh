# Las órdenes de los documentos dan lo que los documentos dicen, y sus enlaces llevan a algo.
set -eu
construccion=$1
temporal=$2
repositorio=$PWD
mkdir -p "$temporal/bin" "$temporal/casos" "$temporal/trabajo"
ln -s "$construccion/console/marnel-consola" "$temporal/bin/"
ln -s "$repositorio/ejemplos" "$temporal/trabajo/"
PATH=$temporal/bin:$PATH
estado=0

mapfile -t documentos < <(find . -path ./build -prune -o -name '*.md' -print)
awk -v casos="$temporal/casos" '
  FNR == 1 { dentro = 0 }
  /^```console$/ { dentro = 1; next }
  /^```/ { dentro = 0; next }
  dentro && /^\$ / {
    caso = sprintf("%s/%03d", casos, ++cuantos)
    print substr($0, 3) > (caso ".orden")
    printf "" > (caso ".esperado")
    next
  }
  dentro { print > (caso ".esperado") }
' "${documentos[@]}"
for orden in "$temporal"/casos/*.orden; do
  esperado=${orden%.orden}.esperado
  (cd "$temporal/trabajo" && bash "$orden") >"$temporal/obtenido" 2>&1 || true
  if ! diff -u "$esperado" "$temporal/obtenido"; then
    echo "no coincide: $(cat "$orden")"
    estado=1
  fi
done

for documento in "${documentos[@]}"; do
  while read -r enlace; do
    if [ ! -e "$(dirname "$documento")/$enlace" ]; then
      echo "$documento: no existe $enlace"
      estado=1
    fi
  done < <(grep -o '](\([^)#:]*\))' "$documento" | sed 's/^](//; s/)$//')
done
exit $estado
