#include "console/lector_campos.h"

#include "console/codificacion.h"

#include <algorithm>

namespace consola {

LectorCampos::LectorCampos(std::istream& origen, std::size_t bloque)
    : origen_(origen), bloque_(std::max<std::size_t>(bloque, 4)) {
    llenar();
    if (std::string_view(bloque_.data(), fin_).starts_with("\xEF\xBB\xBF")) {
        posicion_ = 3;
    }
}

std::string_view LectorCampos::comienzo() const {
    return {bloque_.data() + posicion_, fin_ - posicion_};
}

bool LectorCampos::llenar() {
    if (!error_.empty()) {
        return false;
    }
    posicion_ = 0;
    fin_ = 0;
    origen_.read(bloque_.data(), static_cast<std::streamsize>(bloque_.size()));
    const auto leidos = static_cast<std::size_t>(origen_.gcount());
    if (origen_.bad()) {
        error_ = "falla la lectura";
        return false;
    }
    const std::string_view bytes(bloque_.data(), leidos);
    if (bytesLeidos_ == 0 && (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))) {
        error_ = "está en UTF-16; guárdelo en UTF-8";
        return false;
    }
    if (bytes.find('\0') != std::string_view::npos) {
        error_ = "no es un archivo de texto";
        return false;
    }
    bytesLeidos_ += leidos;
    fin_ = leidos;
    return leidos > 0;
}

LectorCampos::Lectura LectorCampos::fallar(std::string error) {
    if (error_.empty()) {
        error_ = std::move(error);
    }
    return Lectura::Error;
}

bool LectorCampos::copiarHasta(std::string& texto, std::string_view paradas) {
    while (quedan()) {
        const std::string_view resto(bloque_.data() + posicion_, fin_ - posicion_);
        const std::size_t hasta = std::min(resto.find_first_of(paradas), resto.size());
        if (texto.size() + hasta > kMaximoCampo) {
            fallar("línea " + std::to_string(linea_) + ": un campo pasa de 16 MiB");
            return false;
        }
        texto.append(resto.substr(0, hasta));
        posicion_ += hasta;
        if (hasta < resto.size()) {
            return true;
        }
    }
    return error_.empty();
}

bool LectorCampos::leerEntreComillas(std::string& texto) {
    const std::int64_t lineaInicial = linea_;
    ++posicion_;
    while (true) {
        const std::size_t antes = texto.size();
        if (!copiarHasta(texto, "\"")) {
            return false;
        }
        linea_ += std::count(texto.begin() + static_cast<std::ptrdiff_t>(antes), texto.end(), '\n');
        if (!quedan()) {
            fallar("línea " + std::to_string(lineaInicial) + ": unas comillas no se cierran");
            return false;
        }
        ++posicion_;
        if (!quedan() || bloque_[posicion_] != '"') {
            return error_.empty();
        }
        texto += '"';
        ++posicion_;
    }
}

LectorCampos::Lectura LectorCampos::terminarCampo(Campo& campo) {
    if (!esUtf8(campo.texto)) {
        campo.texto = desdeWindows1252(campo.texto);
        habiaWindows1252_ = true;
    }
    campo.fila = fila_;
    campo.columna = columna_;
    campo.ultimo = true;
    separadorPendiente_ = false;
    if (quedan()) {
        const char c = bloque_[posicion_++];
        if (c == dialecto_.separador) {
            campo.ultimo = false;
            separadorPendiente_ = true;
            ++columna_;
            return Lectura::Campo;
        }
        if (c == '\r' && quedan() && bloque_[posicion_] == '\n') {
            ++posicion_;
        }
    }
    if (!error_.empty()) {
        return Lectura::Error;
    }
    ++linea_;
    ++fila_;
    columna_ = 0;
    return Lectura::Campo;
}

LectorCampos::Lectura LectorCampos::siguiente(Campo& campo) {
    campo.texto.clear();
    if (!quedan() && !separadorPendiente_) {
        return error_.empty() ? Lectura::Fin : Lectura::Error;
    }
    if (dialecto_.comillas && quedan() && bloque_[posicion_] == '"' &&
        !leerEntreComillas(campo.texto)) {
        return Lectura::Error;
    }
    // Tras unas comillas cerradas, lo que haya hasta el separador se conserva.
    const char paradas[] = {dialecto_.separador, '\n', '\r'};
    if (!copiarHasta(campo.texto, {paradas, sizeof paradas})) {
        return Lectura::Error;
    }
    return terminarCampo(campo);
}

} // namespace consola
