#pragma once

#include "tests/ui/eventos/azar.h"

#include <QString>

namespace pruebas {

/// Lo que alguien teclea o pega en una celda. Ninguna fórmula mira el reloj ni lee bloques grandes,
/// para que el comprobador pueda recalcularlas todas.
inline QString textoDeCelda(Azar& azar) {
    static const char* const kTextos[] = {
        "1",
        "-7",
        "2,5",
        "1e308",
        "nan",
        "inf",
        "15%",
        "$ 1.234,5",
        "1/2/2024",
        "VERDADERO",
        "hola",
        "África",
        "<b>x</b>",
        "%1 & %2",
        "   ",
        "\"",
        "'=1",
        "=A1+1",
        "=B2",
        "=C3*2",
        "=A1",
        "=SUMA(A1:C5)",
        "=PROMEDIO(B1:B9)",
        "=CONTAR(A1:D4)",
        "=SI(B2>3;\"sí\";A1)",
        "=BUSCARV(1;A1:C9;2;0)",
        "=SUMAR.SI(A1:A9;\">1\";B1:B9)",
        "=CONCATENAR(A1;\" \";B1)",
        "='Hoja 2'!A1+1",
        "='Hoja 1'!B2",
        "=1/0",
        "=NADA(1)",
        "=((((1",
        "=\"",
        "=A1:B2",
        "=$A$1+A$2+$B1",
    };
    const QString texto = QString::fromUtf8(azar.uno(kTextos));
    return azar.deCada(60) ? texto.repeated(500) : texto;
}

/// Lo que hay en el portapapeles: una celda, una tabla o cualquier cosa.
inline QString textoDePortapapeles(Azar& azar) {
    QString texto;
    const int filas = azar.entre(1, 6);
    const int columnas = azar.entre(1, 5);
    for (int fila = 0; fila < filas; ++fila) {
        for (int col = 0; col < columnas; ++col) {
            texto += textoDeCelda(azar).left(200) + (col + 1 < columnas ? u'\t' : u'\n');
        }
    }
    return azar.deCada(4) ? texto.chopped(1) : texto;
}

} // namespace pruebas
