#include "model/reserva_bloques.h"

#include <algorithm>
#include <new>
#include <sys/mman.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MARNEL_VIGILA_MEMORIA 1
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define MARNEL_VIGILA_MEMORIA 1
#endif

#ifdef MARNEL_VIGILA_MEMORIA
#include <sanitizer/asan_interface.h>
#include <sanitizer/lsan_interface.h>
#endif

namespace nucleo {

namespace {

// AddressSanitizer no sabe qué huecos están libres ni que aquí hay punteros: se le cuenta.

void cerrarPaso([[maybe_unused]] void* inicio, [[maybe_unused]] std::size_t bytes) {
#ifdef MARNEL_VIGILA_MEMORIA
    __asan_poison_memory_region(inicio, bytes);
#endif
}

void abrirPaso([[maybe_unused]] void* inicio, [[maybe_unused]] std::size_t bytes) {
#ifdef MARNEL_VIGILA_MEMORIA
    __asan_unpoison_memory_region(inicio, bytes);
#endif
}

void contarPunteros([[maybe_unused]] void* inicio, [[maybe_unused]] std::size_t bytes) {
#ifdef MARNEL_VIGILA_MEMORIA
    __lsan_register_root_region(inicio, bytes);
#endif
}

void noContarPunteros([[maybe_unused]] void* inicio, [[maybe_unused]] std::size_t bytes) {
#ifdef MARNEL_VIGILA_MEMORIA
    __lsan_unregister_root_region(inicio, bytes);
#endif
}

/// Memoria del sistema que empieza en un múltiplo de su tamaño.
std::byte* pedirAlSistema(std::size_t bytes) {
    void* const doble =
        mmap(nullptr, bytes * 2, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (doble == MAP_FAILED)
        throw std::bad_alloc();
    auto* const inicio = static_cast<std::byte*>(doble);
    const std::size_t sobra = bytes - reinterpret_cast<std::uintptr_t>(inicio) % bytes;
    // Lo que sobra se reparte entre los dos lados; puede sobrar solo detrás.
    const std::size_t delante = sobra % bytes;
    if (delante != 0)
        munmap(inicio, delante);
    munmap(inicio + delante + bytes, bytes - delante);
    return inicio + delante;
}

} // namespace

/// Un hueco libre apunta al siguiente.
struct ReservaBloques::Hueco {
    Hueco* siguiente;
};

/// La cabecera de un trozo; detrás van sus huecos.
struct alignas(ReservaBloques::kAlineacion) ReservaBloques::Trozo {
    Trozo* anterior = nullptr;
    Trozo* siguiente = nullptr;
    Hueco* libre = nullptr;     ///< usados alguna vez y devueltos
    std::size_t estrenados = 0; ///< los primeros se han usado alguna vez
    std::size_t usados = 0;

    std::byte* memoria() { return reinterpret_cast<std::byte*>(this) + sizeof(Trozo); }

    void entrarEn(Trozo*& lista) {
        anterior = nullptr;
        siguiente = lista;
        if (lista != nullptr)
            lista->anterior = this;
        lista = this;
    }
    void salirDe(Trozo*& lista) {
        if (siguiente != nullptr)
            siguiente->anterior = anterior;
        if (anterior != nullptr)
            anterior->siguiente = siguiente;
        else
            lista = siguiente;
    }
};

// Quien la destruye ha soltado antes todos los huecos.
ReservaBloques::~ReservaBloques() {
    while (vacios_ != nullptr)
        devolver(vacios_);
}

void* ReservaBloques::pedir() {
    Trozo* const trozo = trozoConSitio();
    std::byte* hueco = nullptr;
    if (trozo->libre != nullptr) {
        hueco = reinterpret_cast<std::byte*>(trozo->libre);
        abrirPaso(hueco, hueco_);
        trozo->libre = trozo->libre->siguiente;
    } else {
        hueco = trozo->memoria() + trozo->estrenados++ * hueco_;
        abrirPaso(hueco, hueco_);
    }
    ++trozo->usados;
    ++huecosDados_;
    if (trozo->usados == huecosPorTrozo())
        trozo->salirDe(empezados_);
    return hueco;
}

void ReservaBloques::soltar(void* hueco) noexcept {
    auto* const inicio = static_cast<std::byte*>(hueco);
    auto* const trozo =
        reinterpret_cast<Trozo*>(inicio - reinterpret_cast<std::uintptr_t>(inicio) % kTrozo);
    if (trozo->usados == huecosPorTrozo())
        trozo->entrarEn(empezados_);
    trozo->libre = new (hueco) Hueco{trozo->libre};
    cerrarPaso(hueco, hueco_);
    --trozo->usados;
    --huecosDados_;
    if (trozo->usados > 0)
        return;
    trozo->salirDe(empezados_);
    trozo->entrarEn(vacios_);
    ++cuantosVacios_;
    devolverSobrantes();
}

std::size_t ReservaBloques::huecosPorTrozo() const {
    return (kTrozo - sizeof(Trozo)) / hueco_;
}

ReservaBloques::Trozo* ReservaBloques::trozoConSitio() {
    if (empezados_ != nullptr)
        return empezados_;
    Trozo* const trozo = vacios_ != nullptr ? vacios_ : nuevoTrozo();
    trozo->salirDe(vacios_);
    --cuantosVacios_;
    trozo->entrarEn(empezados_);
    return trozo;
}

ReservaBloques::Trozo* ReservaBloques::nuevoTrozo() {
    std::byte* const inicio = pedirAlSistema(kTrozo);
    // Un libro pequeño cabe en el primero y no ocupa más páginas de las que toca. Un núcleo que no
    // sepa prepararlas las prepara al tocarlas.
    if (trozos_ > 0)
        madvise(inicio, kTrozo, MADV_POPULATE_WRITE);
    auto* const trozo = new (inicio) Trozo;
    contarPunteros(trozo->memoria(), kTrozo - sizeof(Trozo));
    cerrarPaso(trozo->memoria(), kTrozo - sizeof(Trozo));
    ++trozos_;
    ++cuantosVacios_;
    trozo->entrarEn(vacios_);
    return trozo;
}

std::size_t ReservaBloques::maximoVacios() const {
    return std::max(kVaciosGuardados, (trozos_ - cuantosVacios_) / 2);
}

void ReservaBloques::devolverSobrantes() noexcept {
    while (cuantosVacios_ > maximoVacios())
        devolver(vacios_);
}

void ReservaBloques::devolver(Trozo* trozo) noexcept {
    trozo->salirDe(vacios_);
    --trozos_;
    --cuantosVacios_;
    noContarPunteros(trozo->memoria(), kTrozo - sizeof(Trozo));
    abrirPaso(trozo, kTrozo);
    munmap(trozo, kTrozo);
}

} // namespace nucleo
