#include "printing/libro_calculado.h"

#include "formula/motor.h"
#include "model/serializador.h"

namespace impresion {

Resultado abrirCalculado(const std::string& ruta, nucleo::Libro& libro) {
    switch (nucleo::Serializador::cargar(ruta, libro)) {
    case nucleo::kArchivoBien:
        motor_formulas::Motor(libro).recalcularTodo();
        return {};
    case nucleo::kArchivoInvalido:
        return {kNoSeLee,
                "no se puede leer «" + ruta + "»: está dañado o no es un libro de Marnel"};
    default:
        return {kNoSeLee, "no se puede leer «" + ruta + "»"};
    }
}

} // namespace impresion
