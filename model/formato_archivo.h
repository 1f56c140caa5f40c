#pragma once

#include "model/escritor_bytes.h"
#include "model/hoja.h"
#include "model/lector_bytes.h"
#include "model/libro.h"
#include "model/limites.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

/// Los bytes del formato ".mrn": cómo se escribe y cómo se lee cada registro. Quien abre, cierra y
/// decide qué hacer con un fallo es `Serializador`.
namespace nucleo {

inline constexpr std::string_view kMagia = "MRNL";
inline constexpr std::uint32_t kVersion = 1;

inline constexpr std::uint32_t kMaximoHojas = 1024;
inline constexpr std::uint32_t kMaximoTamanos = 1000000;
inline constexpr std::uint32_t kMaximoFusiones = 1000000;
inline constexpr std::uint32_t kMaximoCeldas = 50000000;

void escribirTexto(EscritorBytes& salida, std::string_view texto);
void escribirRegistroCelda(EscritorBytes& salida, std::uint64_t clave, const Celda& celda);
void escribirRegistroHoja(EscritorBytes& salida, const Hoja& hoja);
void escribirLibro(EscritorBytes& salida, const Libro& libro);

// Lectores: falso a la primera lectura corta o cuenta por encima de su máximo.
bool leerTextoContado(LectorBytes& entrada, std::string& texto);
/// Lo leído queda en el almacén cuando se llama a `terminar`.
bool leerRegistroCelda(LectorBytes& entrada, AlmacenCeldas::Anexador& celdas);
bool leerRegistroHoja(LectorBytes& entrada, Hoja& hoja);
/// Lee la cabecera y todas las hojas; `activa` queda como esté escrita.
bool leerLibro(LectorBytes& entrada, std::vector<std::unique_ptr<Hoja>>& hojas,
               std::int32_t& activa);

} // namespace nucleo
