// La cinta de botones.

#include "ui/boton_alineacion.h"
#include "ui/ventana_principal.h"
#include "ui/widget_hoja.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace interfaz {

using nucleo::AlineacionH;
using nucleo::FormatoNumero;

namespace {

/// Qt añade estos botones para lo que no cabe en una ventana estrecha, pero no los nombra.
void nombrarBotonDeExtension(QWidget* barra, const char* nombre) {
    if (auto* boton = barra->findChild<QToolButton*>(QLatin1String(nombre))) {
        boton->setAccessibleName(QStringLiteral("Más órdenes"));
    }
}

} // namespace

VentanaPrincipal::Orden VentanaPrincipal::yRefrescar(Orden orden) {
    return [this, orden = std::move(orden)] {
        orden();
        refrescarTodo();
    };
}

QWidget* VentanaPrincipal::mkIconBtn(const QString& glifo, const QString& titulo, bool marcable,
                                     Orden accion, const QString& estilo, QToolButton** guardarEn,
                                     AlineacionH alineacion) {
    auto* ranura = new QWidget;
    ranura->setObjectName(QStringLiteral("slot_btn"));
    auto* columna = new QVBoxLayout(ranura);
    columna->setContentsMargins(2, 1, 2, 1);
    columna->setSpacing(1);

    QToolButton* boton =
        alineacion == AlineacionH::General ? new QToolButton : new BotonAlineacion(alineacion);
    boton->setObjectName(QStringLiteral("btn_toolbar"));
    boton->setText(glifo);
    boton->setToolTip(titulo);
    boton->setAccessibleName(titulo);
    boton->setCheckable(marcable);
    boton->setFixedSize(30, 30);
    boton->installEventFilter(this);
    if (!estilo.isEmpty()) {
        boton->setStyleSheet(estilo);
    }
    connect(boton, &QToolButton::clicked, this, [this, accion = std::move(accion)] {
        confirmarPendiente();
        accion();
    });
    columna->addWidget(boton, 0, Qt::AlignHCenter);

    auto* rotulo = new QLabel(titulo);
    rotulo->setObjectName(QStringLiteral("lbl_toolbar"));
    rotulo->setAlignment(Qt::AlignCenter);
    rotulo->setMinimumWidth(56);
    columna->addWidget(rotulo, 0, Qt::AlignHCenter);
    if (guardarEn != nullptr) {
        *guardarEn = boton;
    }
    return ranura;
}

QFrame* VentanaPrincipal::crearGrupo(const QString& nombre, const QString& titulo,
                                     const std::vector<QWidget*>& botones) {
    auto* grupo = new QFrame;
    grupo->setObjectName(nombre);
    grupo->setFrameShape(QFrame::NoFrame);
    auto* columna = new QVBoxLayout(grupo);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(2);
    auto* encabezado = new QLabel(titulo);
    encabezado->setObjectName(QStringLiteral("header_grupo"));
    encabezado->setAlignment(Qt::AlignCenter);
    columna->addWidget(encabezado);

    auto* fila = new QWidget;
    fila->setObjectName(QStringLiteral("fila_btns"));
    auto* hilera = new QHBoxLayout(fila);
    hilera->setContentsMargins(0, 0, 0, 0);
    hilera->setSpacing(0);
    for (QWidget* boton : botones) {
        hilera->addWidget(boton);
    }
    columna->addWidget(fila);
    return grupo;
}

void VentanaPrincipal::configurarBarra() {
    QToolBar* barra = addToolBar(QStringLiteral("Barra"));
    barra->setObjectName(QStringLiteral("cinta"));
    barra->setMovable(false);
    barra->setFloatable(false);
    barra->setContextMenuPolicy(Qt::PreventContextMenu);
    nombrarBotonDeExtension(barra, "qt_toolbar_ext_button");
    nombrarBotonDeExtension(menuBar(), "qt_menubar_ext_button");

    const QString estiloNegrita = QStringLiteral("font-size: 15px; font-weight: 900;");
    const QString estiloCursiva = QStringLiteral("font-size: 15px; font-style: italic;");
    const QString estiloSubrayado = QStringLiteral("font-size: 15px; text-decoration: underline;");
    const QString estiloDecimales = QStringLiteral("font-size: 12px; font-weight: 700;");

    const auto boton = [this](const char* glifo, const char* titulo, Orden orden,
                              const QString& estilo = QString(), QToolButton** guardarEn = nullptr,
                              bool marcable = false) {
        return mkIconBtn(QString::fromUtf8(glifo), QString::fromUtf8(titulo), marcable,
                         yRefrescar(std::move(orden)), estilo, guardarEn);
    };
    const auto alineacion = [this](const char* titulo, AlineacionH valor) {
        return mkIconBtn(QString(), QString::fromUtf8(titulo), false,
                         yRefrescar([this, valor] { editor_.aplicarAlineacion(valor); }), QString(),
                         nullptr, valor);
    };

    const std::vector<QFrame*> grupos = {
        crearGrupo(QStringLiteral("g_historial"), QStringLiteral("Historial"),
                   {boton(
                        "↩", "Deshacer", [this] { editor_.deshacer(); }, {}, &botonDeshacer_),
                    boton(
                        "↪", "Rehacer", [this] { editor_.rehacer(); }, {}, &botonRehacer_)}),
        crearGrupo(QStringLiteral("g_memoria"), QStringLiteral("Memoria"),
                   {boton("✂", "Cortar", [this] { widgetHoja_->cortar(); }),
                    mkIconBtn(QStringLiteral("⎘"), QStringLiteral("Copiar"), false,
                              [this] { widgetHoja_->copiar(); }),
                    boton(
                        "⊕", "Pegar", [this] { widgetHoja_->pegar(); }, {}, &botonPegar_)}),
        crearGrupo(QStringLiteral("g_estilo"), QStringLiteral("Estilo de celda"),
                   {boton(
                        "N", "Negrita", [this] { editor_.alternarNegrita(); }, estiloNegrita,
                        &botonNegrita_, true),
                    boton(
                        "I", "Cursiva", [this] { editor_.alternarCursiva(); }, estiloCursiva,
                        &botonCursiva_, true),
                    boton(
                        "S", "Subrayado", [this] { editor_.alternarSubrayado(); }, estiloSubrayado,
                        &botonSubrayado_, true)}),
        crearGrupo(QStringLiteral("g_alineacion"), QStringLiteral("Alineación"),
                   {alineacion("Izquierda", AlineacionH::Izquierda),
                    alineacion("Centrar", AlineacionH::Centro),
                    alineacion("Derecha", AlineacionH::Derecha)}),
        crearGrupo(QStringLiteral("g_numero"), QStringLiteral("Número"),
                   {boton("$", "Moneda", [this] { editor_.aplicarFormato(FormatoNumero::Moneda); }),
                    boton("%", "Porcentaje",
                          [this] { editor_.aplicarFormato(FormatoNumero::Porcentaje); }),
                    boton(
                        ",0", "Menos decimales", [this] { editor_.cambiarDecimales(-1); },
                        estiloDecimales),
                    boton(
                        ",00", "Más decimales", [this] { editor_.cambiarDecimales(1); },
                        estiloDecimales)}),
        crearGrupo(QStringLiteral("g_celdas"), QStringLiteral("Celdas"),
                   {boton("⊞", "Fusionar", [this] { editor_.fusionarSeleccion(); }),
                    boton("⊟", "Separar", [this] { editor_.separarFusion(); })}),
    };
    for (QFrame* grupo : grupos) {
        if (grupo != grupos.front()) {
            barra->addSeparator();
        }
        barra->addWidget(grupo);
    }
}

} // namespace interfaz
