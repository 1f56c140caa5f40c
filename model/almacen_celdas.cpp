#include "model/almacen_celdas.h"

#include "model/almacen_operaciones.h"

namespace nucleo {

template class ArbolCeldas<GeometriaHoja>;
template class AnexadorCeldas<GeometriaHoja>;
template class AlmacenEnBloques<GeometriaHoja>;

} // namespace nucleo
