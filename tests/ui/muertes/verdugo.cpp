#include "tests/ui/muertes/verdugo.h"

#include "model/autosave.h"
#include "tests/ui/muertes/huella.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace pruebas {

namespace {

using Reloj = std::chrono::steady_clock;

/// Solo se agota si el programa no responde.
constexpr std::chrono::seconds kPaciencia{60};
/// De media, lo que tarda el programa en poder editar; dentro de él caen las muertes al arrancar.
constexpr int kArranqueMicrosegundos = 600'000;
/// Más que lo que dura un ciclo del reloj con el archivo más grande.
constexpr int kCicloMicrosegundos = 60'000;

constexpr std::int64_t kNanosegundos = 1'000'000'000;

/// Lo que puede durar guardar el documento.
constexpr int kGuardadoMicrosegundos = 15'000;

struct Instante {
    bool existe = false;
    std::int64_t segundos = 0;
    std::int64_t nanosegundos = 0;
    bool operator==(const Instante&) const = default;
};

Instante cambiado(const std::string& ruta) {
    struct stat datos = {};
    if (lstat(ruta.c_str(), &datos) != 0) {
        return {};
    }
    return {true, datos.st_mtim.tv_sec, datos.st_mtim.tv_nsec};
}

std::optional<std::uint64_t> huellaDelArchivo(const std::string& ruta) {
    if (!std::filesystem::exists(ruta)) {
        return std::nullopt;
    }
    nucleo::Libro libro;
    return nucleo::Serializador::cargar(ruta, libro) == nucleo::kArchivoBien ? huella(libro)
                                                                             : Disco::kRoto;
}

/// Las líneas enteras que llegan por una tubería.
class Lineas {
  public:
    explicit Lineas(int descriptor) : descriptor_(descriptor) {}

    /// Espera como mucho hasta `limite`; falso si no llegó nada o se acabó.
    bool esperar(Reloj::time_point limite) {
        const std::int64_t falta = std::chrono::nanoseconds(limite - Reloj::now()).count();
        const timespec espera = {falta / kNanosegundos, falta % kNanosegundos};
        pollfd mirar = {descriptor_, POLLIN, 0};
        std::array<char, 4096> bytes{};
        if (falta < 0 || ppoll(&mirar, 1, &espera, nullptr) <= 0) {
            return false;
        }
        const ssize_t leidos = read(descriptor_, bytes.data(), bytes.size());
        if (leidos <= 0) {
            return false;
        }
        pendiente_.append(bytes.data(), static_cast<std::size_t>(leidos));
        return true;
    }
    bool siguiente(std::string& linea) {
        const std::size_t fin = pendiente_.find('\n');
        if (fin == std::string::npos) {
            return false;
        }
        linea = pendiente_.substr(0, fin);
        pendiente_.erase(0, fin + 1);
        return true;
    }

  private:
    int descriptor_;
    std::string pendiente_;
};

} // namespace

struct Verdugo::Proceso {
    pid_t id;
    int salida;
};

Cuenta& Cuenta::operator+=(const Cuenta& otra) {
    muertes += otra.muertes;
    arrancando += otra.arrancando;
    aMedioEscribir += otra.aMedioEscribir;
    documentosRotos += otra.documentosRotos;
    recuperaciones += otra.recuperaciones;
    return *this;
}

Verdugo::Verdugo(std::string programa, std::uint64_t semilla, bool conDocumento)
    : programa_(std::move(programa)), azar_(semilla), conDocumento_(conDocumento),
      documento_(carpeta_.ruta("libro.mrn")),
      recuperacion_(
          carpeta_.ruta(conDocumento ? "tmp/marnel_libro.mrt" : "tmp/marnel_sin_titulo.mrt")),
      sinNada_(huella(nucleo::Libro())) {
    std::filesystem::create_directory(carpeta_.ruta("tmp"));
    std::filesystem::create_directory(carpeta_.ruta("casa"));
    std::filesystem::permissions(carpeta_.ruta("casa"), std::filesystem::perms::owner_all);
    if (conDocumento_) {
        nucleo::Serializador::guardar(nucleo::Libro(), documento_);
    }
}

Disco Verdugo::mirarDisco() const {
    return {huellaDelArchivo(recuperacion_), huellaDelArchivo(documento_)};
}

std::string Verdugo::archivosDeMas() const {
    for (const auto& uno : std::filesystem::directory_iterator(carpeta_.ruta("tmp"))) {
        const std::string ruta = uno.path();
        if (ruta != recuperacion_ && ruta != recuperacion_ + "~") {
            return "deja un archivo de más: " + uno.path().filename().string();
        }
    }
    return {};
}

std::string Verdugo::reponerDocumento() {
    ++cuenta_.documentosRotos;
    std::error_code error;
    std::filesystem::rename(recuperacion_, documento_, error);
    return error ? "no queda copia de un documento roto" : "";
}

Verdugo::Proceso Verdugo::nacer() {
    std::array<int, 2> tubo{};
    if (pipe2(tubo.data(), O_CLOEXEC) != 0) {
        return {-1, -1};
    }
    std::vector<std::string> entorno;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        entorno.emplace_back(*variable);
    }
    // Las primeras valen: lo propio va delante de lo heredado.
    entorno.insert(entorno.begin(),
                   {"TMPDIR=" + carpeta_.ruta("tmp"), "HOME=" + carpeta_.ruta("casa"),
                    "XDG_RUNTIME_DIR=" + carpeta_.ruta("casa"), "QT_QPA_PLATFORM=offscreen"});
    std::vector<std::string> argumentos = {programa_, "--programa",
                                           std::to_string(azar_.hasta(1'000'000'000))};
    if (conDocumento_) {
        argumentos.push_back(documento_);
    }
    const auto punteros = [](std::vector<std::string>& textos) {
        std::vector<char*> todos;
        for (std::string& texto : textos) {
            todos.push_back(texto.data());
        }
        todos.push_back(nullptr);
        return todos;
    };
    posix_spawn_file_actions_t acciones;
    posix_spawn_file_actions_init(&acciones);
    posix_spawn_file_actions_adddup2(&acciones, tubo[1], STDOUT_FILENO);
    const std::string errores = carpeta_.ruta("errores");
    posix_spawn_file_actions_addopen(&acciones, STDERR_FILENO, errores.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t id = -1;
    if (posix_spawn(&id, programa_.c_str(), &acciones, nullptr, punteros(argumentos).data(),
                    punteros(entorno).data()) != 0) {
        id = -1;
    }
    posix_spawn_file_actions_destroy(&acciones);
    close(tubo[1]);
    return {id, tubo[0]};
}

std::string Verdugo::vivirYMorir(const Proceso& proceso, Vida& vida) {
    std::string malo;
    std::string linea;
    Lineas lineas(proceso.salida);
    const bool alArrancar = azar_.deCada(8);
    int faltan = alArrancar ? 0 : azar_.entre(1, 60);
    Reloj::time_point hora = Reloj::now() + kPaciencia;
    const auto sentenciar = [&](int ciclo) {
        hora = Reloj::now() + std::chrono::microseconds(azar_.hasta(ciclo));
    };
    if (alArrancar) {
        sentenciar(kArranqueMicrosegundos);
    }
    const auto leerTodas = [&] {
        while (lineas.siguiente(linea)) {
            if (malo.empty()) {
                malo = vida.leer(linea);
            }
            if (faltan > 0 && --faltan == 0) {
                sentenciar(kCicloMicrosegundos);
            } else if (linea == "guardando" && faltan > 0 && azar_.deCada(6)) {
                faltan = 0;
                sentenciar(kGuardadoMicrosegundos);
            } else if (linea == "roto" && faltan > 1) {
                faltan = 1; // después solo dirá con qué libro se queda
            }
        }
    };
    while (lineas.esperar(hora)) {
        leerTodas();
    }
    const bool seCalla = faltan > 0;
    kill(proceso.id, SIGKILL);
    int estado = 0;
    waitpid(proceso.id, &estado, 0);
    while (lineas.esperar(Reloj::now() + kPaciencia)) {
        leerTodas();
    }
    if (!WIFSIGNALED(estado) || WTERMSIG(estado) != SIGKILL) {
        return "terminó solo, con estado " + std::to_string(estado) + ":\n" +
               carpeta_.leer("errores");
    }
    return malo.empty() && seCalla ? "no responde; lo último que dijo: " + linea : malo;
}

std::string Verdugo::matar() {
    Disco antes = mirarDisco();
    const std::string provisional = recuperacion_ + "~";
    const Instante provisionalAntes = cambiado(provisional);
    Vida vida(antes, sinNada_);
    const Proceso proceso = nacer();
    if (proceso.id < 0) {
        return "no se pudo arrancar";
    }
    std::string malo = vivirYMorir(proceso, vida);
    close(proceso.salida);
    ++cuenta_.muertes;
    cuenta_.arrancando += vida.empezoAEditar() ? 0 : 1;
    cuenta_.recuperaciones += vida.recupero() && vida.empezoAEditar() ? 1 : 0;
    const Instante provisionalAhora = cambiado(provisional);
    cuenta_.aMedioEscribir +=
        provisionalAhora.existe && provisionalAhora != provisionalAntes ? 1 : 0;
    if (malo.empty()) {
        malo = vida.defecto(mirarDisco());
    }
    if (malo.empty()) {
        malo = archivosDeMas();
    }
    return malo.empty() && vida.documentoRoto() ? reponerDocumento() : malo;
}

} // namespace pruebas
