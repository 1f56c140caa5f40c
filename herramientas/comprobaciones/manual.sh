# El manual está al día con el programa, y en HTML todos sus enlaces e imágenes llevan a algo.
set -eu
construccion=$1
temporal=$2
estado=0

cp docs/manual/funciones.md "$temporal/funciones.md"
herramientas/hacer-funciones "$construccion/console/marnel-consola" "$temporal/funciones.md"
diff -u docs/manual/funciones.md "$temporal/funciones.md" ||
  { echo "hay que pasar herramientas/hacer-funciones"; estado=1; }

# Las órdenes que el manual nombra como «Menú › Orden» están en la ventana.
while read -r orden; do
  grep -q -F "QStringLiteral(\"$orden\")" ui/ventana_menus.cpp ||
    { echo "no hay ninguna orden «$orden»"; estado=1; }
done < <(cat docs/manual/*.md | tr '\n' ' ' | grep -o '«[^«»]* › [^«»]*»' | sed 's/.* › //; s/»$//')

herramientas/hacer-manual "$temporal/html"
/usr/bin/python3 - "$temporal/html" <<'FIN' || estado=1
import html.parser
import pathlib
import sys
import urllib.parse

carpeta = pathlib.Path(sys.argv[1])


class Pagina(html.parser.HTMLParser):
    def __init__(self, ruta):
        super().__init__()
        self.destinos, self.anclas = [], set()
        self.feed(ruta.read_text(encoding="utf-8"))

    def handle_starttag(self, etiqueta, atributos):
        atributos = dict(atributos)
        self.anclas.add(atributos.get("id"))
        self.destinos += [atributos[a] for a in ("href", "src") if a in atributos]
        if etiqueta == "img" and not atributos.get("alt"):
            self.destinos.append("una imagen sin texto alternativo")


paginas = {ruta.name: Pagina(ruta) for ruta in carpeta.glob("*.html")}
malos = 0
for nombre, pagina in paginas.items():
    for destino in pagina.destinos:
        ruta, _, ancla = urllib.parse.unquote(destino).partition("#")
        ruta = ruta or nombre
        bien = (carpeta / ruta).is_file()
        if not bien or (ancla and ancla not in paginas[ruta].anclas):
            print(f"{nombre}: no lleva a nada {destino}")
            malos += 1
sys.exit(malos > 0 or len(paginas) < 8)
FIN
exit $estado
