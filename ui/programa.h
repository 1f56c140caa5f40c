#pragma once

/// El programa entero: muestra la ventana, abre el libro del primer argumento si existe y atiende
/// los eventos hasta que se cierra o el sistema pide terminar. Devuelve el código de salida.
int qMain(int argc, char* argv[]);
