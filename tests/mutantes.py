#!/usr/bin/env python3
"""Cambia una a una las comparaciones y las cotas del código y mira si alguna prueba lo nota.

Cada mutante es una línea con un operador o una constante cambiados. Se compila sobre una copia
privada del repositorio y se pasan las pruebas de su capa: si alguna falla, se cae o no acaba, el
mutante muere. Los que no compilan y los que dan el mismo programa no cuentan.

    tests/mutantes.py                            300 mutantes repartidos por todos los archivos
    tests/mutantes.py --solo formula/lexico.cpp  todos los de un archivo, o de archivo:línea
    tests/mutantes.py --repetir ANTES.jsonl      otra vez los que sobrevivieron en ese informe
"""

import argparse
import glob
import json
import os
import queue
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

RAIZ = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# Lo que se muta: cada patrón, con los programas de prueba que guardan esos archivos.
CAPAS = [
    (["formula/*.cpp", "formula/*.h", "formula/functions/*.cpp", "formula/functions/*.h"],
     ["pruebas_formula"]),
    (["model/serializador.cpp", "model/formato_lectura.cpp", "model/formato_archivo.h",
      "model/lector_bytes.*", "model/archivo_libro.cpp", "model/archivos.cpp",
      "model/anexador_celdas.h"],
     ["pruebas_model"]),
    (["rendering/geometria.cpp", "rendering/ejes.*", "rendering/eje_vista.*",
      "rendering/regiones.*", "rendering/mapa_fusiones.*"],
     ["pruebas_rendering"]),
]

MINIMO = 90
LIMITE_CPU = 5
MEMORIA = 6 << 30


# --- Qué se cambia -------------------------------------------------------------------------------

CAMBIOS = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "==": ["!="], "!=": ["=="], "&&": ["||"], "||": ["&&"],
}
OPERADOR = re.compile(r"(?<=\s)(<=|>=|==|!=|&&|\|\||<|>)(?=\s)")
SIN_CODIGO = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\''
    r"|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.DOTALL | re.MULTILINE)
NUMERO = r"(?:0[xX][0-9A-Fa-f']+|\d[\d']*(?:\.\d+)?(?:[eE][-+]?\d+)?)[uUlL]*"
CONSTANTE = re.compile(r"(?<![\w.'])(?:" + NUMERO + r"|(?:\w+::)*k[A-Z]\w*)(?![\w.'(:<\[{])")
COTA_ANTES = re.compile(r"(?:<=|>=|==|!=|\s<|\s>|\s\+|\s-|\b(?:min|max|clamp)(?:<[^<>]*>)?\()\s*$")
COTA_DESPUES = re.compile(r"\s*(?:<=|>=|==|!=)|\s+[-<>+]\s")
DEFINICION = re.compile(r"\bconstexpr\b[^=;(]*=[^;]*$")


def sin_comentarios(texto):
    """El texto con comentarios, literales de texto y directivas en blanco, de la misma longitud."""
    return SIN_CODIGO.sub(lambda hallado: re.sub(r"[^\n]", " ", hallado.group()), texto)


def recorridos_de_iteradores(codigo):
    """Los tramos de las cabeceras de `for` que recorren con iteradores."""
    for inicio in re.finditer(r"\bfor \(", codigo):
        hondo, fin = 1, inicio.end()
        while hondo and fin < len(codigo):
            hondo += {"(": 1, ")": -1}.get(codigo[fin], 0)
            fin += 1
        if re.search(r"\bbegin\(|\bend\(", codigo[inicio.start():fin]):
            yield inicio.start(), fin


def candidatos(archivo):
    """Todos los mutantes de un archivo, en el orden del texto."""
    with open(os.path.join(RAIZ, archivo), encoding="utf-8") as fuente:
        texto = fuente.read()
    codigo = sin_comentarios(texto)
    excluidos = list(recorridos_de_iteradores(codigo))
    sitios = [(hallado, cambio) for hallado in OPERADOR.finditer(codigo)
              for cambio in CAMBIOS[hallado.group()]]
    for hallado in CONSTANTE.finditer(codigo):
        antes = codigo[max(0, hallado.start() - 200):hallado.start()]
        if (COTA_ANTES.search(antes) or COTA_DESPUES.match(codigo, hallado.end())
                or (hallado.group()[0].isdigit() and DEFINICION.search(antes))):
            sitios += [(hallado, f"({hallado.group()} {signo} 1)") for signo in "+-"]
    for hallado, cambio in sorted(sitios, key=lambda sitio: (sitio[0].start(), sitio[1])):
        posicion = hallado.start()
        if any(inicio <= posicion < fin for inicio, fin in excluidos):
            continue
        comienzo = texto.rfind("\n", 0, posicion) + 1
        yield {
            "archivo": archivo, "linea": texto.count("\n", 0, posicion) + 1,
            "columna": posicion - comienzo + 1, "antes": hallado.group(), "despues": cambio,
            "texto": texto[comienzo:texto.find("\n", posicion)].strip(),
        }


def nombre(mutante):
    return (f"{mutante['archivo']}:{mutante['linea']}:{mutante['columna']} "
            f"{mutante['antes']} -> {mutante['despues']}")


def elegir(cuantos, semilla):
    """Una muestra repartida por todos los archivos, siempre la misma con la misma semilla."""
    todos = {archivo: list(candidatos(archivo)) for archivo in archivos()}
    total = sum(map(len, todos.values()))
    elegidos = []
    for archivo, suyos in todos.items():
        parte = min(len(suyos), max(2, round(cuantos * len(suyos) / total)))
        elegidos += random.Random(f"{semilla} {archivo}").sample(suyos, parte)
    # Barajados, lo que se lleve hecho es en todo momento una muestra del conjunto; las cabeceras
    # al final, porque cada una obliga a compilar mucho.
    random.Random(semilla).shuffle(elegidos)
    elegidos = elegidos[:cuantos]
    return sorted(elegidos, key=lambda mutante: mutante["archivo"].endswith(".h")), total


def archivos():
    return [os.path.relpath(archivo, RAIZ) for patrones, _ in CAPAS for patron in patrones
            for archivo in sorted(glob.glob(os.path.join(RAIZ, patron)))]


def programas_de(archivo):
    for patrones, programas in CAPAS:
        if any(archivo == os.path.relpath(ruta, RAIZ)
               for patron in patrones for ruta in glob.glob(os.path.join(RAIZ, patron))):
            return programas
    raise SystemExit(f"{archivo} no está entre los archivos que se mutan")


# --- Copia privada, construcción y pruebas -------------------------------------------------------

class Taller:
    """Una copia del repositorio con su construcción, donde vive un mutante cada vez."""

    def __init__(self, carpeta, programas):
        self.fuentes = os.path.join(carpeta, "fuentes")
        self.construccion = os.path.join(carpeta, "construccion")
        self.casa = os.path.join(carpeta, "casa")
        self.programas = programas
        self.limites = {}
        self.originales = {}
        self.copiar()
        self.configurar()

    def copiar(self):
        listado = subprocess.run(["git", "-C", RAIZ, "ls-files", "-z", "-c", "-o", "--exclude-standard"],
                                 check=True, capture_output=True).stdout.decode()
        for relativa in filter(None, listado.split("\0")):
            origen, destino = os.path.join(RAIZ, relativa), os.path.join(self.fuentes, relativa)
            if not os.path.isfile(origen):
                continue
            os.makedirs(os.path.dirname(destino), exist_ok=True)
            with open(origen, "rb") as archivo:
                bytes_origen = archivo.read()
            if leer(destino) != bytes_origen:
                shutil.copyfile(origen, destino)

    def configurar(self):
        interfaz = "ON" if "pruebas_rendering" in self.programas else "OFF"
        self.exigir(["cmake", "-S", self.fuentes, "-B", self.construccion, "-G", "Ninja",
                     "-DCMAKE_BUILD_TYPE=Debug",
                     "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -w -D_GLIBCXX_ASSERTIONS",
                     *(["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []),
                     "-DMARNEL_PRUEBAS=ON", f"-DMARNEL_INTERFAZ={interfaz}"])
        self.exigir(["ninja", "-C", self.construccion, f"-j{os.cpu_count()}", *self.programas])
        for programa in self.programas:
            antes = cpu_de_hijos()
            fallo = self.probar(programa, [], 600)
            if fallo:
                raise SystemExit(f"{programa} falla sin ningún mutante: {fallo}")
            self.limites[programa] = LIMITE_CPU + 4 * int(cpu_de_hijos() - antes)
            self.originales[programa] = leer(self.ruta(programa))

    def exigir(self, orden):
        hecho = subprocess.run(orden, capture_output=True, text=True)
        if hecho.returncode:
            raise SystemExit(hecho.stdout[-4000:] + hecho.stderr[-4000:])

    def ruta(self, programa):
        return os.path.join(self.construccion, "tests", programa.removeprefix("pruebas_"), programa)

    def construir(self, programa):
        return subprocess.run(["ninja", "-C", self.construccion, "-j1", programa],
                              capture_output=True).returncode == 0

    def probar(self, programa, opciones, segundos):
        """Cadena vacía si todo pasa; si no, qué falló."""
        shutil.rmtree(self.casa, ignore_errors=True)
        os.makedirs(self.casa)
        entorno = {"PATH": os.environ["PATH"], "HOME": self.casa, "TMPDIR": self.casa,
                   "XDG_RUNTIME_DIR": self.casa, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}

        def acotar():
            resource.setrlimit(resource.RLIMIT_CPU, (segundos, segundos + 5))
            resource.setrlimit(resource.RLIMIT_AS, (MEMORIA, MEMORIA))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        # El tiempo que cuenta es el de procesador: el de reloj depende de quién más trabaje.
        with subprocess.Popen([self.ruta(programa), "--gtest_fail_fast", "--gtest_brief=1", *opciones],
                              cwd=self.casa, env=entorno, preexec_fn=acotar, start_new_session=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT) as proceso:
            try:
                salida = proceso.communicate(timeout=60 * segundos)[0].decode(errors="replace")
            except subprocess.TimeoutExpired:
                os.killpg(proceso.pid, signal.SIGKILL)
                proceso.communicate()
                return "no acaba"
        if proceso.returncode == 0:
            return ""
        if proceso.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
            return "no acaba"
        falladas = re.findall(r"\[  FAILED  \] (\S+?)[,\s]", salida)
        return falladas[0] if falladas else f"se cae ({proceso.returncode})"

    def juzgar(self, mutante):
        """(veredicto, detalle): muere, sobrevive, igual o no compila."""
        ruta = os.path.join(self.fuentes, mutante["archivo"])
        original = leer(ruta)
        lineas = original.decode().split("\n")
        fila, columna = mutante["linea"] - 1, mutante["columna"] - 1
        resto = lineas[fila][columna:]
        if not resto.startswith(mutante["antes"]):
            return "cambiado", "el código ya no es el del informe"
        lineas[fila] = lineas[fila][:columna] + mutante["despues"] + resto[len(mutante["antes"]):]
        # El archivo se repone y ya se volverá a compilar con el mutante siguiente.
        try:
            escribir(ruta, "\n".join(lineas).encode())
            for programa in programas_de(mutante["archivo"]):
                if not self.construir(programa):
                    return "no compila", ""
                if leer(self.ruta(programa)) == self.originales[programa]:
                    return "igual", "el programa compilado es el mismo"
                for opciones in ordenes_de_prueba(mutante["archivo"]):
                    fallo = self.probar(programa, opciones, self.limites[programa])
                    if fallo:
                        return "muere", f"{programa}: {fallo}"
            return "sobrevive", ""
        finally:
            escribir(ruta, original)


def ordenes_de_prueba(archivo):
    """Primero las pruebas que se llaman como el archivo, luego las demás."""
    capa, tronco = archivo.split("/")[0], os.path.splitext(os.path.basename(archivo))[0]
    grupos = set()
    for ruta in glob.glob(os.path.join(RAIZ, "tests", capa, "**", "*.cpp"), recursive=True):
        if tronco in os.path.basename(ruta):
            grupos |= set(re.findall(r"^TEST(?:_F|_P)?\((\w+),", leer(ruta).decode(), re.MULTILINE))
    suyas = ":".join(f"{grupo}.*:*/{grupo}.*" for grupo in sorted(grupos))
    return [[f"--gtest_filter={suyas}"], [f"--gtest_filter=-{suyas}"]] if suyas else [[]]


def leer(ruta):
    try:
        with open(ruta, "rb") as archivo:
            return archivo.read()
    except FileNotFoundError:
        return None


def escribir(ruta, contenido):
    with open(ruta, "wb") as archivo:
        archivo.write(contenido)


def cpu_de_hijos():
    uso = resource.getrusage(resource.RUSAGE_CHILDREN)
    return uso.ru_utime + uso.ru_stime


# --- La tanda ------------------------------------------------------------------------------------

def trabajar(taller, pendientes, apuntar):
    while True:
        try:
            mutante = pendientes.get_nowait()
        except queue.Empty:
            return
        inicio = time.monotonic()
        veredicto, detalle = taller.juzgar(mutante)
        apuntar({**mutante, "veredicto": veredicto, "detalle": detalle,
                 "segundos": round(time.monotonic() - inicio, 1)})


def correr(mutantes, carpeta, trabajos, informe):
    programas = sorted({programa for mutante in mutantes for programa in programas_de(mutante["archivo"])})
    pendientes = queue.Queue()
    for mutante in mutantes:
        pendientes.put(mutante)
    hechos, cerrojo = [], threading.Lock()

    def apuntar(hecho):
        with cerrojo:
            hechos.append(hecho)
            informe.write(json.dumps(hecho, ensure_ascii=False) + "\n")
            informe.flush()
            print(f"{len(hechos):4}/{len(mutantes)} {hecho['segundos']:6.1f} s  {hecho['veredicto']:10} "
                  f"{nombre(hecho)}  {hecho['detalle']}", flush=True)

    talleres = [Taller(os.path.join(carpeta, str(i)), programas) for i in range(trabajos)]
    hilos = [threading.Thread(target=trabajar, args=(taller, pendientes, apuntar)) for taller in talleres]
    for hilo in hilos:
        hilo.start()
    for hilo in hilos:
        hilo.join()
    return hechos


def apuntados(informe):
    """Lo que dice un informe, de cada mutante lo último."""
    return list({nombre(hecho): hecho for hecho in
                 (json.loads(linea) for linea in (leer(informe) or b"").splitlines())}.values())


def resumir(hechos):
    """Escribe la cuenta y los que sobreviven; devuelve el tanto por ciento que muere."""
    cuenta = {}
    for hecho in hechos:
        cuenta[hecho["veredicto"]] = cuenta.get(hecho["veredicto"], 0) + 1
    for hecho in hechos:
        if hecho["veredicto"] == "sobrevive":
            print(f"\nsobrevive {nombre(hecho)}\n    {hecho['texto']}")
    muertos, vivos = cuenta.get("muere", 0), cuenta.get("sobrevive", 0)
    tanto = 100.0 * muertos / (muertos + vivos) if muertos + vivos else 100.0
    print(f"\n{len(hechos)} mutantes: {muertos} mueren, {vivos} sobreviven, "
          f"{cuenta.get('igual', 0)} dan el mismo programa, {cuenta.get('no compila', 0)} no compilan. "
          f"Muere el {tanto:.1f} %.")
    return tanto


def main():
    analizador = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    analizador.add_argument("--cuantos", type=int, default=300, help="tamaño de la muestra (300)")
    analizador.add_argument("--semilla", default="1", help="semilla de la muestra (1)")
    analizador.add_argument("--solo", nargs="+", help="archivos, o archivo:línea")
    analizador.add_argument("--repetir", help="informe cuyos supervivientes se prueban otra vez")
    analizador.add_argument("--trabajos", type=int, default=1, help="mutantes a la vez (1)")
    analizador.add_argument("--carpeta", help="dónde trabajar y dejar lo construido para otra vez")
    analizador.add_argument("--informe", default=os.devnull, help="archivo al que se añade un JSON por mutante;\nlos que ya tenga no se repiten")
    analizador.add_argument("--listar", action="store_true", help="enseñar los elegidos y no correr nada")
    opciones = analizador.parse_args()

    if opciones.repetir:
        mutantes = [apunte for apunte in apuntados(opciones.repetir)
                    if apunte["veredicto"] == "sobrevive"]
    elif opciones.solo:
        mutantes = [mutante for archivo in dict.fromkeys(sitio.split(":")[0] for sitio in opciones.solo)
                    for mutante in candidatos(archivo)
                    if {archivo, f"{archivo}:{mutante['linea']}"} & set(opciones.solo)]
    else:
        mutantes, total = elegir(opciones.cuantos, opciones.semilla)
        print(f"{len(mutantes)} mutantes elegidos de {total}", flush=True)
    if opciones.listar:
        for mutante in mutantes:
            print(f"{nombre(mutante)}\n    {mutante['texto']}")
        return 0

    hechos = apuntados(opciones.informe) if not opciones.repetir else []
    ya = {nombre(hecho) for hecho in hechos}
    mutantes = [mutante for mutante in mutantes if nombre(mutante) not in ya]

    carpeta = opciones.carpeta or tempfile.mkdtemp(prefix="mutantes-")
    try:
        with open(opciones.informe, "a", encoding="utf-8") as informe:
            hechos += correr(mutantes, os.path.abspath(carpeta), opciones.trabajos, informe)
    finally:
        if not opciones.carpeta:
            shutil.rmtree(carpeta, ignore_errors=True)
    return 0 if resumir(hechos) >= MINIMO else 1


if __name__ == "__main__":
    sys.exit(main())
