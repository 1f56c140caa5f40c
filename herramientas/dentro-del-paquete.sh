# shellcheck shell=bash
# Lo que herramientas/probar-paquete hace dentro del Debian recién creado.
set -eu
cd /srv
export TMPDIR=/tmp XDG_RUNTIME_DIR=/tmp QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

fallar() {
  echo "error: $*" >&2
  exit 1
}

apt-get update -q >/dev/null
apt-get install -q -y --no-install-recommends ./marnel_*.deb >instalar.registro 2>&1 ||
  { tail -n 20 instalar.registro; fallar "apt install"; }
echo "instalado, con $(grep -c '^Setting up' instalar.registro) paquetes nuevos"

[ "$(marnel-consola evaluar '=SUMA(1;2;3)')" = 6 ] || fallar "marnel-consola"
ejemplos=/usr/share/doc/marnel/ejemplos
marnel-consola imprimir "$ejemplos/presupuesto.mrn" a.pdf --todas
[ "$(head -c 5 a.pdf)" = %PDF- ] || fallar "el PDF"
marnel-miniatura "$ejemplos/presupuesto.mrn" a.png 256
[ "$(head -c 4 a.png | tail -c 3)" = PNG ] || fallar "la miniatura"
grep -q 'Manual de Marnel' /usr/share/doc/marnel/manual/index.html || fallar "el manual"
echo "marnel-consola, imprimir, miniatura y manual: bien"

# La ventana se abre, carga los textos españoles de Qt y se cierra cuando se lo piden.
marnel "$ejemplos/notas.mrn" 2>marnel.registro &
programa=$!
for _ in $(seq 300); do
  if grep -q qtbase_es.qm "/proc/$programa/maps" 2>/dev/null; then break; fi
  sleep 0.1
done
grep -q qtbase_es.qm "/proc/$programa/maps" ||
  { cat marnel.registro; fallar "la ventana no carga los textos españoles de Qt"; }
sleep 2
kill -TERM $programa || fallar "la ventana se ha cerrado sola"
wait $programa || fallar "la ventana acaba con estado $?"
echo "marnel: se abre sin pantalla, con los textos de Qt en español, y se cierra"

rm -f a.pdf a.png marnel.registro
dpkg -L marnel | sort >archivos
for orden in remove purge; do
  apt-get install -q -y --no-install-recommends ./marnel_*.deb >instalar.registro 2>&1
  apt-get $orden -q -y marnel >quitar.registro 2>&1 || { cat quitar.registro; fallar "apt $orden"; }
  while read -r ruta; do
    # Una carpeta puede ser también de otro paquete; un archivo, no.
    if [ -e "$ruta" ] && ! dpkg -S "$ruta" >/dev/null 2>&1; then
      fallar "apt $orden deja $ruta"
    fi
  done <archivos
  if dpkg -s marnel >/dev/null 2>&1; then fallar "tras apt $orden, dpkg aún lo conoce"; fi
  find / -xdev -iname '*marnel*' -not -path '/proc/*' -not -path '/var/cache/*' \
    -not -path '/var/log/*' -not -path '/srv/marnel_*.deb' >restos
  if [ -s restos ]; then
    cat restos
    fallar "apt $orden deja archivos"
  fi
done
echo "quitado: no queda nada"
