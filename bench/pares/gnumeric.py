"""Mide los mismos trabajos en Gnumeric a través de sus enlaces. Uso: gnumeric.py LIBRO.tsv VECES TRABAJO..."""

import ctypes
import sys
import time

import gi

gi.require_version("Gnm", "1.12")
gi.require_version("GOffice", "0.10")
from gi.repository import GOffice, Gnm  # noqa: E402

from libros import en_ingles  # noqa: E402


def residente():
    return int(open("/proc/self/statm").read().split()[1]) * 4096 / 1e6


def cronometrar(nombre, trabajo):
    inicio = time.perf_counter()
    trabajo()
    print(nombre, (time.perf_counter() - inicio) * 1000, flush=True)


def nuevo():
    libro = Gnm.Workbook.new()
    libro.set_recalcmode(False)
    # Con sitio bajo la última fila del libro más largo, para poder insertar.
    hoja = Gnm.Sheet.new(libro, "Hoja1", 256, 131072)
    libro.sheet_attach(hoja)
    return libro, hoja


def cargar(hoja, ruta):
    filas = ancho = 0
    for fila, linea in enumerate(open(ruta)):
        for col, campo in enumerate(linea.rstrip("\n").split("\t")):
            if campo:
                texto = en_ingles(campo, ",") if campo.startswith("=") else campo
                hoja.cell_set_text(col, fila, texto)
                ancho = max(ancho, col + 1)
        filas = fila + 1
    return filas, ancho


def fijar(libro, hoja, col, fila, numero):
    hoja.cell_set_text(col, fila, str(numero))
    libro.recalc()


def main():
    ruta, veces, trabajos = sys.argv[1], int(sys.argv[2]), sys.argv[3:]
    Gnm.init()
    if trabajos == ["memoria"]:
        antes = residente()
        vista = Gnm.WorkbookView.new_from_uri(f"file://{ruta}.gnumeric", None, contexto(), None)
        print("memoria", residente() - antes)
        return vista
    libro, hoja = nuevo()
    filas, ancho = cargar(hoja, ruta)
    libro.recalc_all()
    for trabajo in trabajos:
        for i in range(veces):
            medir(trabajo, i, libro, hoja, filas, ancho, ruta)


def avisos():
    return Gnm.CmdContextStderr.new()


def contexto():
    return GOffice.IOContext.new(avisos())


def rango(col1, fila1, col2, fila2):
    r = Gnm.Range()
    r.init(col1, fila1, col2, fila2)
    return r


class Clausula(ctypes.Structure):
    _fields_ = [("columna", ctypes.c_int), ("descendente", ctypes.c_int),
                ("distingue_caja", ctypes.c_int), ("por_valor", ctypes.c_int)]


class Orden(ctypes.Structure):
    _fields_ = [("hoja", ctypes.c_void_p), ("rango", ctypes.POINTER(ctypes.c_int * 4)),
                ("cuantas", ctypes.c_int), ("clausulas", ctypes.POINTER(Clausula)),
                ("por_filas", ctypes.c_int), ("con_formatos", ctypes.c_int), ("idioma", ctypes.c_char_p)]


def ordenar(hoja, filas, ancho, ascendente):
    """Ordena todo por la primera columna. Los enlaces no saben llenar sus estructuras: va por debajo."""
    with open("/proc/self/maps") as mapas:
        biblioteca = next(linea.split()[-1] for linea in mapas if "libspreadsheet" in linea)
    rectangulo = (ctypes.c_int * 4)(0, 0, ancho - 1, filas - 1)
    clausula = Clausula(0, 0 if ascendente else 1, 0, 1)
    orden = Orden(hash(hoja), ctypes.pointer(rectangulo), 1, ctypes.pointer(clausula), 1, 0, None)
    ctypes.CDLL(biblioteca).gnm_sort_contents(ctypes.byref(orden), ctypes.c_void_p(hash(avisos())))


def medir(trabajo, i, libro, hoja, filas, ancho, ruta):
    if trabajo == "todo":
        cronometrar(trabajo, libro.recalc_all)
    elif trabajo in ("primera", "medio"):
        cronometrar(trabajo, lambda: fijar(libro, hoja, 0, 0 if trabajo == "primera" else 5000, i + 2))
    elif trabajo == "editar":
        if i == 0:
            hoja.cell_set_text(20, 0, "=A1*2")
        cronometrar(trabajo, lambda: fijar(libro, hoja, 0, 0, i + 1000))
    elif trabajo == "insertar":
        def insertar():
            hoja.insert_rows(0, 1, avisos())
            libro.recalc()
        cronometrar(trabajo, insertar)
    elif trabajo == "ordenar":
        cronometrar(trabajo, lambda: (ordenar(hoja, filas, ancho, i % 2 == 0), libro.recalc()))
    elif trabajo == "pegar":
        # Cada celda se lee de su texto, como al pegar en los demás.
        textos = [str(fila * 7 + i) for fila in range(65536)]

        def pegar():
            for fila, texto in enumerate(textos):
                hoja.cell_set_text(0, fila, texto)
            libro.recalc()
        cronometrar(trabajo, pegar)
    elif trabajo == "archivo":
        vista = Gnm.WorkbookView.new(libro)
        guardador = GOffice.FileSaver.for_id("Gnumeric_XmlIO:sax")
        destino = f"file://{ruta}.gnumeric"
        cronometrar("guardar", lambda: vista.save_as(guardador, destino, avisos()))
        cronometrar("abrir", lambda: Gnm.WorkbookView.new_from_uri(destino, None, contexto(), None))
    else:
        raise SystemExit(f"sin medida para {trabajo}")


main()
