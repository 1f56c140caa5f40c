#include "tests/ui/muertes/vida.h"

#include <cstdlib>
#include <string_view>

namespace pruebas {

Vida::Vida(const Disco& alNacer, std::uint64_t sinNada)
    : alNacer_(alNacer),
      sinNada_(sinNada), recuperaciones_{alNacer.recuperacion}, documentos_{alNacer.documento} {}

std::string Vida::leer(const std::string& linea) {
    constexpr std::string_view kEstado = "estado ";
    if (linea.starts_with(kEstado)) {
        const std::uint64_t estado = std::strtoull(linea.c_str() + kEstado.size(), nullptr, 16);
        const bool primero = !actual_;
        actual_ = estado;
        if (primero) {
            return leerPrimerEstado(estado);
        }
        // Desde ahora, y hasta que diga que lo ha escrito, puede estar escribiéndose este.
        recuperaciones_.insert(actual_);
        return {};
    }
    if (linea == "oferta") {
        ofrecio_ = true;
        return alNacer_.recuperacion ? "" : "ofrece recuperar un archivo que no existe";
    }
    if (linea == "si") {
        recupero_ = true;
    } else if (linea == "no") {
        recuperaciones_.insert(std::nullopt);
    } else if (linea == "roto") {
        documentoRoto_ = true;
        return alNacer_.documento == Disco::kRoto ? "" : "no abre un documento entero";
    } else if (linea == "escrito") {
        recuperaciones_ = {actual_};
    } else if (linea == "guardando") {
        guardando_ = true;
        habiaRecuperacion_ = recuperaciones_.count(std::nullopt) == 0;
        recuperaciones_.insert({actual_, std::nullopt});
        documentos_.insert({actual_, Disco::kRoto});
    } else if (linea == "guardado") {
        guardando_ = false;
        recuperaciones_ = {std::nullopt};
        documentos_ = {actual_};
    } else {
        return "dice: " + linea;
    }
    return {};
}

std::string Vida::leerPrimerEstado(std::uint64_t estado) {
    if (documentoRoto_) {
        return estado == sinNada_ ? "" : "tras no abrir un documento roto no queda vacío";
    }
    if (!ofrecio_ && alNacer_.recuperacion) {
        return "no ofrece lo que hay por recuperar";
    }
    if (recupero_) {
        return estado == alNacer_.recuperacion ? "" : "no recupera lo que había en el archivo";
    }
    recuperaciones_ = {std::nullopt};
    return estado == alNacer_.documento.value_or(sinNada_) ? "" : "no empieza con el documento";
}

std::string Vida::defecto(const Disco& alMorir) const {
    if (alMorir.recuperacion == Disco::kRoto) {
        return "el archivo de recuperación está a medias";
    }
    if (recuperaciones_.count(alMorir.recuperacion) == 0) {
        return alMorir.recuperacion ? "el archivo de recuperación guarda un estado que no toca"
                                    : "el archivo de recuperación ha desaparecido";
    }
    if (documentos_.count(alMorir.documento) == 0) {
        return "el documento no guarda lo que se guardó";
    }
    // La copia de recuperación se escribe antes que el documento y se borra después.
    const bool sinCopia =
        alMorir.documento == Disco::kRoto || (habiaRecuperacion_ && !alMorir.recuperacion);
    if (guardando_ && sinCopia && alMorir.documento != actual_ && alMorir.recuperacion != actual_) {
        return "muere guardando sin que quede una copia entera";
    }
    return {};
}

} // namespace pruebas
