# Lo instalado está donde se espera, obedece a DESTDIR y al prefijo, y es correcto para quien lo lee.
set -eu
construccion=$1
repositorio=$PWD
destino=$2/destino
DESTDIR=$destino cmake --install "$construccion" --prefix /opt/prueba >/dev/null
[ "$(ls "$destino")" = opt ] || { echo "algo se instala fuera del prefijo"; exit 1; }
cd "$destino/opt/prueba"
apps=share/icons/hicolor/
for archivo in bin/marnel{,-consola,-miniatura} libexec/marnel/marnel-impresora \
  share/applications/org.quenda.Marnel.desktop share/metainfo/org.quenda.Marnel.metainfo.xml \
  share/mime/packages/quenda-marnel.xml share/thumbnailers/marnel.thumbnailer \
  "$apps"{16x16,22x22,24x24,32x32,48x48,64x64,128x128,256x256,512x512}/apps/org.quenda.Marnel.png \
  "$apps"{16x16,22x22,24x24,32x32,48x48,64x64,128x128,256x256}/mimetypes/application-x-marnel.png \
  "$apps"scalable/apps/org.quenda.Marnel.svg "$apps"scalable/mimetypes/application-x-marnel.svg \
  share/man/{,es/}man1/marnel{,-consola,-miniatura}.1.gz \
  share/bash-completion/completions/marnel-consola \
  share/doc/marnel/{copyright,changelog.gz} share/doc/marnel/ejemplos/presupuesto.mrn \
  share/doc/marnel/manual/{index.html,estilo.css,imagenes/ventana.png}; do
  [ -s "$archivo" ] || { echo "falta $archivo"; exit 1; }
done

# Los programas instalados se encuentran entre sí.
[ "$(bin/marnel-consola evaluar '=SUMA(1;2;3)')" = 6 ]
libro=share/doc/marnel/ejemplos/errores.mrn
bin/marnel-consola imprimir "$libro" "$2/a.pdf"
[ -s "$2/a.pdf" ]

# Lo que leen el escritorio y el catálogo de programas.
desktop-file-validate share/applications/org.quenda.Marnel.desktop
appstreamcli validate --no-net share/metainfo/org.quenda.Marnel.metainfo.xml
update-mime-database share/mime
grep -qx 'application/x-marnel:\*\.mrn' share/mime/globs
cp "$libro" "$2/sin-extension"
clase=$(/usr/bin/python3 - "$2/sin-extension" <<'FIN'
import struct
import sys

# El archivo "magic" que hace update-mime-database: "[prioridad:tipo]" y líneas ">0=" largo, bytes.
datos = open("share/mime/magic", "rb").read()
libro = open(sys.argv[1], "rb").read()
for seccion in datos.split(b"\n[")[1:]:
    cabecera, cuerpo = seccion.split(b"]\n", 1)
    inicio = cuerpo.index(b"=") + 1
    (largo,) = struct.unpack(">H", cuerpo[inicio : inicio + 2])
    if libro.startswith(cuerpo[inicio + 2 : inicio + 2 + largo]):
        print(cabecera.split(b":")[1].decode())
        break
FIN
)
[ "$clase" = application/x-marnel ] || { echo "un libro sin extensión no se reconoce: $clase"; exit 1; }

# Cada icono mide lo que dice su carpeta.
for icono in share/icons/hicolor/[0-9]*/*/*.png; do
  lado=$(basename "$(dirname "$(dirname "$icono")")")
  medida=$(od -An -tu1 -j18 -N6 "$icono" | awk '{ print $1 * 256 + $2 "x" $5 * 256 + $6 }')
  [ "$medida" = "$lado" ] || { echo "$icono mide $medida"; exit 1; }
done

# El administrador de archivos llama a lo que dice el archivo, con sus huecos rellenos.
orden=$(sed -n 's/^Exec=//p' share/thumbnailers/marnel.thumbnailer)
orden=${orden//%i/$libro}
orden=${orden//%o/$2/miniatura.png}
# Sin prisa: en las pruebas, el programa va con sanitizadores y con otros a la vez.
PATH=$PWD/bin:$PATH bash -c "${orden//%s/128 600000}"
[ "$(head -c 4 "$2/miniatura.png" | tail -c 3)" = PNG ]

cmp -s "$repositorio/ui/recursos/icono.svg" share/icons/hicolor/scalable/apps/org.quenda.Marnel.svg
