# Otro proyecto puede usar las capas de Marnel con add_subdirectory, sin sus pruebas.
set -eu
destino=$1/subproyecto
if [ ! -f "$destino/build.ninja" ]; then
  lanzador=$(command -v ccache || true)
  cmake -S tests/subproyecto -B "$destino" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 ${lanzador:+-DCMAKE_CXX_COMPILER_LAUNCHER=$lanzador}
fi
ninja -C "$destino" -j1 consumidor
"$destino/consumidor"
for objetivo in marnel_model marnel_rendering marnel_ui marnel marnel-consola marnel-impresora marnel-miniatura marnel-captura; do
  ninja -C "$destino" -t query "$objetivo" >/dev/null
done
if ninja -C "$destino" -t targets all | grep 'pruebas_'; then
  echo "un subproyecto no construye las pruebas"
  exit 1
fi
