# Los guiones de bash se leen sin errores.
set -eu
for guion in ejecutar probar .ci/run herramientas/*.sh herramientas/comprobaciones/*.sh; do
  bash -n "$guion"
done
