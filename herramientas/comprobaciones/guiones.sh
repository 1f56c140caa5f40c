# Los guiones de bash se leen sin errores.
set -eu
for guion in ejecutar probar .ci/run fuzz/correr bench/exponentes herramientas/*.sh \
  herramientas/comprobaciones/*.sh \
  herramientas/hacer-{ejemplos,iconos,imagenes,paquete} \
  herramientas/{comprobar-estilo,pasar-valgrind,probar-paquete}; do
  bash -n "$guion"
done
for guion in herramientas/hacer-{funciones,manual} tests/mutantes.py bench/{comparar,arranque} \
  bench/pares/*.py; do
  /usr/bin/python3 -c 'import ast, sys; ast.parse(open(sys.argv[1]).read())' "$guion"
done
