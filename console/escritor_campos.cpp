#include "console/escritor_campos.h"

namespace consola {

namespace {

constexpr std::size_t kEntrega = 65536;
constexpr std::string_view kMarcaUtf8 = "\xEF\xBB\xBF";

} // namespace

EscritorCampos::EscritorCampos(std::ostream& destino, const Dialecto& dialecto)
    : destino_(destino), dialecto_(dialecto), especiales_("\r\n") {
    especiales_ += dialecto.separador;
    if (dialecto.comillas) {
        especiales_ += '"';
    }
}

EscritorCampos::~EscritorCampos() {
    terminar();
}

void EscritorCampos::entregar() {
    destino_.write(pendiente_.data(), static_cast<std::streamsize>(pendiente_.size()));
    pendiente_.clear();
}

bool EscritorCampos::terminar() {
    entregar();
    destino_.flush();
    return destino_.good();
}

void EscritorCampos::campo(std::string_view texto) {
    if (enRegistro_) {
        pendiente_ += dialecto_.separador;
    }
    enRegistro_ = true;
    // Al principio del archivo, la marca de UTF-8 se leería como tal y no como texto.
    const bool parecenMarca = principio_ && texto.starts_with(kMarcaUtf8);
    principio_ = false;
    const bool llevaEspeciales = texto.find_first_of(especiales_) != std::string_view::npos;
    if (!llevaEspeciales && !parecenMarca) {
        pendiente_ += texto;
    } else if (dialecto_.comillas) {
        pendiente_ += '"';
        for (const char c : texto) {
            if (c == '"') {
                pendiente_ += '"';
            }
            pendiente_ += c;
        }
        pendiente_ += '"';
    } else {
        // Sin comillas que la protejan, va detrás de otra, que es la que se salta quien lee.
        if (parecenMarca) {
            pendiente_ += kMarcaUtf8;
        }
        if (llevaEspeciales) {
            ++camposCambiados_;
        }
        for (const char c : texto) {
            pendiente_ += especiales_.find(c) == std::string::npos ? c : ' ';
        }
    }
    if (pendiente_.size() >= kEntrega) {
        entregar();
    }
}

void EscritorCampos::finDeRegistro() {
    pendiente_ += '\n';
    enRegistro_ = false;
    principio_ = false;
}

} // namespace consola
