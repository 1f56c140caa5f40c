#pragma once

#include <cstddef>
#include <cstdint>

namespace nucleo {

/// Memoria para los bloques de celdas llenos, que son todos del mismo tamaño. La pide al sistema
/// por trozos de 2 MiB y, desde el segundo, con sus páginas ya preparadas de una vez: si se
/// prepararan al tocarlas, abrir, desplazar u ordenar un millón de celdas gastaría en ello la
/// tercera parte del tiempo. Los trozos sin bloques se guardan para lo siguiente mientras no pasen
/// de la mitad de los que sí los tienen, que lo que se edita en un libro grande no pida memoria
/// cada vez que el historial suelta la que tenía; los demás vuelven al sistema.
///
/// Es de un solo hilo, como el almacén.
class ReservaBloques {
  public:
    static constexpr std::size_t kTrozo = std::size_t{2} << 20;
    static constexpr std::size_t kAlineacion = 64;
    /// Trozos sin ningún bloque que se guardan en todo caso.
    static constexpr std::size_t kVaciosGuardados = 16;

    /// `hueco`: bytes de cada bloque, múltiplo de 64; caben varios en un trozo.
    explicit ReservaBloques(std::size_t hueco) : hueco_(hueco) {}
    ~ReservaBloques();
    ReservaBloques(const ReservaBloques&) = delete;
    ReservaBloques& operator=(const ReservaBloques&) = delete;

    /// Un hueco alineado a 64 bytes. Si falta memoria lanza `std::bad_alloc`, como `new`.
    void* pedir();
    /// Devuelve un hueco que dio `pedir`.
    void soltar(void* hueco) noexcept;

    /// Bytes de los huecos que se han dado y no se han devuelto.
    std::size_t ocupados() const { return huecosDados_ * hueco_; }
    /// Los que no se han devuelto al sistema.
    std::size_t trozos() const { return trozos_; }

  private:
    struct Hueco;
    struct Trozo;

    std::size_t huecosPorTrozo() const;
    /// Un trozo con sitio: uno empezado, uno vacío de los guardados o uno nuevo.
    Trozo* trozoConSitio();
    Trozo* nuevoTrozo();
    std::size_t maximoVacios() const;
    void devolverSobrantes() noexcept;
    void devolver(Trozo* trozo) noexcept;

    std::size_t hueco_;
    std::size_t huecosDados_ = 0;
    std::size_t trozos_ = 0;
    std::size_t cuantosVacios_ = 0;
    Trozo* empezados_ = nullptr; ///< lista de los que tienen huecos dados y huecos libres
    Trozo* vacios_ = nullptr;    ///< lista de los que no tienen ninguno dado
};

} // namespace nucleo
