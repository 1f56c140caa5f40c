# Escribe ejemplos/ventas.tsv: 20.000 ventas, siempre las mismas.
# uso: awk -f herramientas/ventas.awk > ejemplos/ventas.tsv

function azar(n) { # 0..n-1; los bits bajos de un generador así se repiten pronto
  semilla = (semilla * 69069 + 1) % 4294967296
  return int(semilla / 65536) % n
}
function fila(a, b, c, d, e, f, g, h, i, j) {
  linea = a "\t" b "\t" c "\t" d "\t" e "\t" f "\t" g "\t" h "\t" i "\t" j
  sub(/\t+$/, "", linea)
  print linea
}
BEGIN {
  semilla = 2026
  ventas = 20000
  primera = 4
  ultima = primera + ventas - 1
  quienes = split("Ana Bello,Bruno Díaz,Carla Funes,Diego Ibarra,Elena Ñancú,Fabio Roldán", quien, ",")
  productos = split("Yerba 1 kg,Café 500 g,Té 100 saquitos,Azúcar 1 kg,Galletitas,Dulce de leche", producto, ",")
  split("4200,9800,3650,1450,1900,3100", precio, ",")
  split("31,28,31,30,31,30,31,31,30,31,30,31", dias, ",")

  fila("Ventas de 2025")
  fila("Total", "=CONTAR(A" primera ":A" ultima ")", "ventas", "=SUMA(D" primera ":D" ultima ")", \
       "=F2/D2", "=SUMA(F" primera ":F" ultima ")")
  fila("Fecha", "Vendió", "Producto", "Unidades", "Precio", "Importe", "", "Producto", "Unidades", "Importe")
  mes = 1
  dia = 1
  for (i = 0; i < ventas; i++) {
    while (i >= ventas * (transcurridos + 1) / 365) {
      transcurridos++
      if (++dia > dias[mes]) { dia = 1; mes++ }
    }
    p = 1 + azar(productos)
    r = primera + i
    resumen_de = resumen_unidades = resumen_importe = ""
    if (i < productos) {
      resumen_de = producto[i + 1]
      resumen_unidades = "=SUMAR.SI(C$" primera ":C$" ultima ";H" r ";D$" primera ":D$" ultima ")"
      resumen_importe = "=SUMAR.SI(C$" primera ":C$" ultima ";H" r ";F$" primera ":F$" ultima ")"
    } else if (i == productos) {
      resumen_de = "Total"
      resumen_unidades = "=SUMA(I" primera ":I" r - 1 ")"
      resumen_importe = "=SUMA(J" primera ":J" r - 1 ")"
    } else if (i > productos + 1 && i <= productos + 1 + quienes) {
      resumen_de = quien[i - productos - 1]
      resumen_unidades = "=SUMAR.SI(B$" primera ":B$" ultima ";H" r ";D$" primera ":D$" ultima ")"
      resumen_importe = "=SUMAR.SI(B$" primera ":B$" ultima ";H" r ";F$" primera ":F$" ultima ")"
    }
    fila(dia "/" mes "/2025", quien[1 + azar(quienes)], producto[p], 1 + azar(24), \
         precio[p] * (100 + 2 * int((mes - 1) / 2)) / 100, "=D" r "*E" r, "", \
         resumen_de, resumen_unidades, resumen_importe)
  }
}
