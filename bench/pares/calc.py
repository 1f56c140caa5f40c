"""Mide los mismos trabajos en LibreOffice Calc a través de UNO. Uso: calc.py LIBRO.tsv VECES TRABAJO..."""

import os
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

from libros import en_ingles


def propiedad(nombre, valor):
    p = PropertyValue()
    p.Name, p.Value = nombre, valor
    return p


def conectar(carpeta):
    proceso = subprocess.Popen(
        ["soffice", "--headless", "--norestore", "--nologo", "--nodefault",
         f"-env:UserInstallation=file://{carpeta}/perfil", "--accept=pipe,name=marnelcomparar;urp;"],
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    resolver = uno.getComponentContext().ServiceManager.createInstance("com.sun.star.bridge.UnoUrlResolver")
    for _ in range(600):
        try:
            contexto = resolver.resolve("uno:pipe,name=marnelcomparar;urp;StarOffice.ComponentContext")
            return proceso, contexto.ServiceManager.createInstance("com.sun.star.frame.Desktop")
        except NoConnectException:
            time.sleep(0.1)
    raise SystemExit("LibreOffice no responde")


def residente(proceso):
    """Memoria residente del árbol de procesos, en MB."""
    total = 0
    pendientes = [proceso.pid]
    while pendientes:
        pid = pendientes.pop()
        try:
            total += int(open(f"/proc/{pid}/statm").read().split()[1]) * 4096
            for tarea in os.listdir(f"/proc/{pid}/task"):
                pendientes += open(f"/proc/{pid}/task/{tarea}/children").read().split()
        except OSError:
            pass
    return total / 1e6


def cargar(escritorio, ruta, oculto):
    """Abre el libro como texto separado, con sus fórmulas evaluadas: por UNO celda a celda tardaría minutos."""
    filas = [linea.rstrip("\n").split("\t") for linea in open(ruta)]
    with open(ruta + ".csv", "w") as salida:
        salida.writelines("\t".join(en_ingles(c, ";") if c.startswith("=") else c for c in fila) + "\n"
                          for fila in filas)
    opciones = "9,0,76,1,,1033,false,true,false,false,false,-1,true"
    documento = escritorio.loadComponentFromURL(
        f"file://{ruta}.csv", "_blank", 0,
        oculto + (propiedad("FilterName", "Text - txt - csv (StarCalc)"), propiedad("FilterOptions", opciones)))
    return documento, documento.Sheets.getByIndex(0), len(filas), max(map(len, filas))


def cronometrar(nombre, trabajo):
    inicio = time.perf_counter()
    trabajo()
    print(nombre, (time.perf_counter() - inicio) * 1000, flush=True)


def main():
    ruta, veces, trabajos = sys.argv[1], int(sys.argv[2]), sys.argv[3:]
    with tempfile.TemporaryDirectory() as carpeta:
        proceso, escritorio = conectar(carpeta)
        try:
            oculto = (propiedad("Hidden", True),)
            if trabajos == ["memoria"]:
                vacio = escritorio.loadComponentFromURL("private:factory/scalc", "_blank", 0, oculto)
                antes = residente(proceso)
                escritorio.loadComponentFromURL(f"file://{ruta}.ods", "_blank", 0, oculto)
                print("memoria", residente(proceso) - antes)
                vacio.close(True)
                return
            documento, hoja, filas, ancho = cargar(escritorio, ruta, oculto)
            documento.calculateAll()
            for trabajo in trabajos:
                for i in range(veces):
                    medir(trabajo, i, documento, hoja, filas, ancho, ruta, escritorio, oculto)
            documento.close(True)
        finally:
            try:
                escritorio.terminate()
            except Exception:  # el programa ya se despide
                pass
            proceso.wait(60)


def medir(trabajo, i, documento, hoja, filas, ancho, ruta, escritorio, oculto):
    if trabajo == "todo":
        cronometrar(trabajo, documento.calculateAll)
    elif trabajo in ("primera", "medio"):
        celda = hoja.getCellByPosition(0, 0 if trabajo == "primera" else 5000)
        cronometrar(trabajo, lambda: (celda.setValue(i + 2), documento.calculate()))
    elif trabajo == "editar":
        if i == 0:
            hoja.getCellByPosition(20, 0).setFormula("=A1*2")
        celda = hoja.getCellByPosition(0, 0)
        cronometrar(trabajo, lambda: (celda.setValue(i + 1000), documento.calculate()))
    elif trabajo == "insertar":
        cronometrar(trabajo, lambda: (hoja.Rows.insertByIndex(0, 1), documento.calculate()))
    elif trabajo == "ordenar":
        campo = uno.createUnoStruct("com.sun.star.table.TableSortField")
        campo.Field, campo.IsAscending = 0, i % 2 == 0
        orden = (propiedad("SortFields", uno.Any("[]com.sun.star.table.TableSortField", (campo,))),
                 propiedad("ContainsHeader", False))
        rango = hoja.getCellRangeByPosition(0, 0, ancho - 1, filas - 1)
        cronometrar(trabajo, lambda: (rango.sort(orden), documento.calculate()))
    elif trabajo == "pegar":
        datos = tuple((float(fila * 7 + i),) for fila in range(65536))
        rango = hoja.getCellRangeByPosition(0, 0, 0, 65535)
        cronometrar(trabajo, lambda: (rango.setDataArray(datos), documento.calculate()))
    elif trabajo == "archivo":
        destino = f"file://{ruta}.ods"
        cronometrar("guardar", lambda: documento.storeToURL(destino, (propiedad("FilterName", "calc8"),)))
        abierto = []
        cronometrar("abrir", lambda: abierto.append(
            escritorio.loadComponentFromURL(destino, "_blank", 0, oculto)))
        abierto[0].close(True)


main()
