#include "tests/ui/eventos/persona.h"

#include "formula/motor.h"
#include "model/serializador.h"
#include "tests/comun/comprobar_libro.h"
#include "tests/ui/eventos/defecto_ventana.h"
#include "tests/ui/eventos/textos.h"
#include "ui/widget_hoja.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QTest>

#include <cstdio>

namespace pruebas {

namespace {

/// Las carpetas de quien usa el programa.
constexpr std::array<const char*, 3> kCarpetas = {"TMPDIR", "HOME", "XDG_RUNTIME_DIR"};
constexpr std::size_t kSucesosRecordados = 40;
/// Lo más grande que se comprueba entero tras cada suceso.
constexpr std::size_t kCeldasComprobables = 3000;
constexpr std::int64_t kLecturasComprobables = 20000;
/// Sucesos seguidos que se admite trabajar con un libro mayor.
constexpr int kSucesosEnGrande = 12;

std::size_t celdasDe(const nucleo::Libro& libro) {
    std::size_t celdas = 0;
    for (const auto& hoja : libro.hojas) {
        celdas += hoja->celdas.size();
    }
    return celdas;
}

} // namespace

PersonaAlAzar::PersonaAlAzar(std::uint64_t semilla, bool narrar)
    : azar_(semilla), narrar_(narrar), archivos_{carpeta_.filePath(QStringLiteral("libro.mrn")),
                                                 carpeta_.filePath(QStringLiteral("otro")),
                                                 carpeta_.filePath(QStringLiteral("roto.mrn")),
                                                 carpeta_.filePath(QStringLiteral("no/existe.mrn")),
                                                 carpeta_.path(),
                                                 QStringLiteral("año & <b>.mrn")},
      respondedor_(azar_, archivos_) {
    for (std::size_t i = 0; i < kCarpetas.size(); ++i) {
        entornoAnterior_[i] = qgetenv(kCarpetas[i]);
        qputenv(kCarpetas[i], carpeta_.path().toLocal8Bit());
    }
    QAccessible::setActive(semilla % 2 == 1);
    prepararArchivos();
    abrirVentana();
}

PersonaAlAzar::~PersonaAlAzar() {
    ventana_.reset();
    QAccessible::setActive(false);
    for (std::size_t i = 0; i < kCarpetas.size(); ++i) {
        qputenv(kCarpetas[i], entornoAnterior_[i]);
    }
}

void PersonaAlAzar::prepararArchivos() {
    nucleo::Libro libro;
    libro.agregarHoja();
    motor_formulas::Motor motor(libro);
    for (int i = 0; i < 60; ++i) {
        motor.establecerCelda(i % 2, i / 6, i % 6, textoDeCelda(azar_).left(100).toStdString());
    }
    libro.hojas[0]->fusiones.push_back({2, 2, 3, 4});
    libro.hojas[0]->filasInmovilizadas = 2;
    nucleo::Serializador::guardar(libro, archivos_[0].toStdString());
    QFile roto(archivos_[2]);
    if (roto.open(QIODevice::WriteOnly)) {
        roto.write("MRNL\x01\x00\x00\x00\xff\xff", 10);
    }
}

void PersonaAlAzar::abrirVentana() {
    ventana_ = std::make_unique<interfaz::VentanaPrincipal>();
    ventana_->resize(900, 500);
    ventana_->show();
    ventana_->activateWindow();
    [[maybe_unused]] const bool activa = QTest::qWaitForWindowActive(ventana_.get());
}

void PersonaAlAzar::anotar(std::string que) {
    if (narrar_) {
        std::fprintf(stderr, "%s\n", que.c_str());
    }
    ultimos_.push_back(std::move(que));
    if (ultimos_.size() > kSucesosRecordados) {
        ultimos_.pop_front();
    }
}

void PersonaAlAzar::siguiente() {
    struct Clase {
        int peso;
        void (PersonaAlAzar::*hacer)();
    };
    static constexpr Clase kClases[] = {
        {240, &PersonaAlAzar::tecla},           {80, &PersonaAlAzar::atajo},
        {140, &PersonaAlAzar::escribirCelda},   {40, &PersonaAlAzar::escribirEnBarra},
        {40, &PersonaAlAzar::irACelda},         {15, &PersonaAlAzar::metodoDeEntrada},
        {90, &PersonaAlAzar::pulsacion},        {80, &PersonaAlAzar::arrastre},
        {30, &PersonaAlAzar::moverSinPulsar},   {40, &PersonaAlAzar::rueda},
        {30, &PersonaAlAzar::menuContextual},   {60, &PersonaAlAzar::accionDeMenu},
        {60, &PersonaAlAzar::botonDeLaVentana}, {30, &PersonaAlAzar::portapapeles},
        {8, &PersonaAlAzar::soltarAlgo},        {25, &PersonaAlAzar::relojes},
        {15, &PersonaAlAzar::cambiarVentana},   {5, &PersonaAlAzar::cerrarVentana},
        {2, &PersonaAlAzar::reabrirPrograma},
    };
    if (grandes_ >= kSucesosEnGrande) {
        volverALoPequeno();
    } else {
        int total = 0;
        for (const Clase& clase : kClases) {
            total += clase.peso;
        }
        int sorteo = azar_.hasta(total);
        const Clase* elegida = kClases;
        while (sorteo >= elegida->peso) {
            sorteo -= elegida->peso;
            ++elegida;
        }
        (this->*elegida->hacer)();
    }
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::string PersonaAlAzar::defecto() {
    if (std::string malo = defectoDeLaVentana(*ventana_); !malo.empty()) {
        return malo;
    }
    nucleo::Libro& libro = ventana_->libro();
    if (celdasDe(libro) > kCeldasComprobables) {
        ++grandes_;
        ++cortas_;
        return {};
    }
    const bool enteras = celdasLeidas(libro) <= kLecturasComprobables;
    grandes_ = enteras ? 0 : grandes_ + 1;
    cortas_ += enteras ? 0 : 1;
    return defectoDelLibro(libro, {true, enteras, enteras});
}

QWidget* PersonaAlAzar::foco() const {
    if (QWidget* menu = QApplication::activePopupWidget()) {
        return menu;
    }
    QWidget* foco = QApplication::focusWidget();
    return foco != nullptr ? foco : ventana_->widgetHoja();
}

QWidget* PersonaAlAzar::cualquierControl() {
    QList<QWidget*> visibles;
    for (QWidget* control : ventana_->findChildren<QWidget*>()) {
        if (control->isVisible() && !control->isWindow()) {
            visibles << control;
        }
    }
    return visibles.isEmpty() ? ventana_.get() : azar_.uno(visibles);
}

QPoint PersonaAlAzar::puntoDe(const QWidget* control) {
    return {azar_.hasta(qMax(1, control->width())), azar_.hasta(qMax(1, control->height()))};
}

} // namespace pruebas
