"""Los libros con los que se compara: cada función da las filas de una hoja, con las fórmulas en español.

Los números son deterministas y los tamaños, parámetros: nada del programa los conoce.
"""

import re

NOMBRES = {
    "SUMA": "SUM", "SI": "IF", "REDONDEAR": "ROUND", "CONTAR.SI": "COUNTIF",
    "SUMAR.SI": "SUMIF", "BUSCARV": "VLOOKUP", "PROMEDIO": "AVERAGE", "MAX": "MAX",
    "VERDADERO": "TRUE", "FALSO": "FALSE",
}
_NOMBRE = re.compile(r"[A-Z]+(?:\.[A-Z]+)*(?=\()|VERDADERO|FALSO")


def en_ingles(formula, separador):
    """La misma fórmula con nombres ingleses y el separador de argumentos del par."""
    return _NOMBRE.sub(lambda m: NOMBRES[m.group()], formula).replace(";", separador)


class Azar:
    """Generador congruencial: los mismos números en todos los programas y versiones."""

    def __init__(self, semilla=1):
        self.estado = semilla

    def entero(self, hasta):
        self.estado = (self.estado * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.estado >> 33) % hasta


def cadena(n=65536):
    return [["1"]] + [[f"=A{i}+1"] for i in range(1, n)]


def tabla(n=65536):
    azar = Azar()
    filas = []
    for i in range(1, n + 1):
        numeros = [str(azar.entero(100000)) for _ in range(5)]
        filas.append(numeros + [f"=A{i}+B{i}*2", f"=F{i}*C{i}", f"=SI(D{i}>50000;G{i};E{i})",
                                f"=REDONDEAR(H{i}*0.5;0)", f"=I{i}+F{i}+1"])
    return filas


def numeros(n=65536, columnas=10):
    azar = Azar(7)
    return [[str(azar.entero(1000000)) for _ in range(columnas)] for _ in range(n)]


def ventanas(n=10000, sumas=1000, contar=200, sumar=200):
    azar = Azar(3)
    filas = [[str(azar.entero(1000)), str(azar.entero(1000))] for _ in range(n)]
    for k in range(sumas):
        filas[k].append(f"=SUMA(A{k // 10 + 1}:A{n - k // 10})")
    for k in range(contar):
        filas[sumas + k].append(f'=CONTAR.SI(A1:A{n};">{k * 5}")')
    for k in range(sumar):
        filas[sumas + contar + k].append(f'=SUMAR.SI(A1:A{n};">{k * 5}";B1:B{n})')
    return filas


def busquedas(n=10000):
    azar = Azar(5)
    return [[str(i * 3), str(azar.entero(100000)), f"=BUSCARV({azar.entero(n) * 3};A$1:B${n};2;FALSO)",
             f"=BUSCARV({azar.entero(n * 3)};A$1:B${n};2;VERDADERO)"] for i in range(n)]


def acumulados(n=5000):
    azar = Azar(9)
    return [[str(azar.entero(1000)), f"=SUMA(A$1:A{i})"] for i in range(1, n + 1)]


def millon(n=62500, columnas=16):
    azar = Azar(11)
    return [[f"{azar.entero(10000000)}.{azar.entero(100):02d}" for _ in range(columnas)] for _ in range(n)]


def pegado():
    return [["0", "=SUMA(A1:A65536)"]]


# Variantes: los mismos trabajos con otros tamaños, fórmulas y formas.


def zigzag(n=30000):
    """Una cadena que va de una columna a otra."""
    return [["1", "=A1*0.5+3"]] + [[f"=B{i}+1", f"=A{i + 1}*0.5+3"] for i in range(1, n)]


def facturas(n=20000):
    azar = Azar(13)
    filas = []
    for i in range(1, n + 1):
        numeros = [f"{azar.entero(9000)}.{azar.entero(100):02d}" for _ in range(8)]
        filas.append(numeros + [f"=SUMA(A{i}:D{i})-E{i}", f"=SI(F{i}<4500;SI(G{i}<4500;I{i}*0.9;I{i});I{i}*1.1)",
                                f"=REDONDEAR(J{i}*1.21;2)", f"=MAX(K{i};H{i})/(1+A{i})"])
    return filas


def rejilla(n=30000, ventanas=400, condiciones=200):
    """Ventanas de dos columnas y condiciones de menor que."""
    azar = Azar(17)
    filas = [[f"{azar.entero(1000)}.5", str(azar.entero(5000)), ""] for _ in range(n)]
    for k in range(ventanas):
        desde = azar.entero(n // 2) + 1
        nombre = "SUMA" if k % 2 == 0 else "PROMEDIO"
        filas[k].append(f"={nombre}(A{desde}:B{desde + n // 3})")
    for k in range(condiciones):
        filas[ventanas + k].append(f'=SUMAR.SI(B$1:B${n};"<{k * 20}";A$1:A${n})')
    return filas


def articulos(n=15000):
    """Búsquedas exactas de textos en una tabla sin orden, con el resultado en la cuarta columna."""
    azar = Azar(19)
    codigos = [f"art-{(i * 7919) % n:06d}" for i in range(n)]
    return [[codigos[i], str(azar.entero(100)), str(azar.entero(100)), f"{azar.entero(9000)}.25",
             f'=BUSCARV("art-{azar.entero(n):06d}";A$1:D${n};4;FALSO)'] for i in range(n)]


def saldos(n=8000):
    azar = Azar(23)
    return [[f"{azar.entero(100000)}.{azar.entero(100):02d}", "", f"=SUMA(A$1:A{i})*2"] for i in range(1, n + 1)]


def mezcla(n=60000):
    azar = Azar(29)
    return [[str(azar.entero(1000000)) if c % 2 == 0 else f"Concepto {azar.entero(100000)}" for c in range(8)]
            for _ in range(n)]
