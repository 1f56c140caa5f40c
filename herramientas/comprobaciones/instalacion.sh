# Lo instalado está donde se espera, obedece a DESTDIR y al prefijo, y es correcto para quien lo lee.
set -eu
construccion=$1
destino=$2/destino
DESTDIR=$destino cmake --install "$construccion" --prefix /opt/prueba >/dev/null
cd "$destino/opt/prueba"
[ "$(bin/marnel-consola evaluar '=SUMA(1;2;3)')" = 6 ]
for archivo in bin/marnel share/applications/org.quenda.Marnel.desktop \
  share/metainfo/org.quenda.Marnel.metainfo.xml share/mime/packages/quenda-marnel.xml \
  share/icons/hicolor/{16x16,32x32,48x48,64x64,256x256}/apps/org.quenda.Marnel.png \
  share/icons/hicolor/scalable/apps/org.quenda.Marnel.svg \
  share/man/{,es/}man1/marnel{,-consola}.1.gz share/bash-completion/completions/marnel-consola; do
  [ -s "$archivo" ] || { echo "falta $archivo"; exit 1; }
done
desktop-file-validate share/applications/org.quenda.Marnel.desktop
appstreamcli validate --no-net share/metainfo/org.quenda.Marnel.metainfo.xml
update-mime-database share/mime
grep -qx 'application/x-marnel:\*\.mrn' share/mime/globs
bash -n share/bash-completion/completions/marnel-consola
for pagina in share/man/man1/*.gz share/man/es/man1/*.gz; do
  gzip -t "$pagina"
done
