// Mide los mismos trabajos en HyperFormula o en IronCalc, que son paquetes de Node.
// Uso: node nodo.mjs CARPETA_DE_PAQUETES (hyperformula|ironcalc) LIBRO.tsv VECES TRABAJO

import { readFileSync } from 'node:fs';
import { join } from 'node:path';

const [paquetes, programa, ruta, veces, trabajo] = process.argv.slice(2);
const NOMBRES = { 'SUMA': 'SUM', 'SI': 'IF', 'REDONDEAR': 'ROUND', 'CONTAR.SI': 'COUNTIF', 'SUMAR.SI': 'SUMIF',
  'BUSCARV': 'VLOOKUP', 'PROMEDIO': 'AVERAGE', 'MAX': 'MAX', 'VERDADERO': 'TRUE()', 'FALSO': 'FALSE()' };

function enIngles(campo) {
  if (!campo.startsWith('='))
    return campo === '' ? null : Number.isNaN(Number(campo)) ? campo : Number(campo);
  return campo.replace(/[A-Z]+(?:\.[A-Z]+)*(?=\()|VERDADERO|FALSO/g, n => NOMBRES[n]).replaceAll(';', ',');
}

function leer() {
  return readFileSync(ruta, 'utf8').trimEnd().split('\n').map(linea => linea.split('\t').map(enIngles));
}

function cronometrar(nombre, hacer) {
  const inicio = performance.now();
  const dado = hacer();
  console.log(nombre, performance.now() - inicio);
  return dado;
}

async function conHyperFormula() {
  const { HyperFormula } = await import(join(paquetes, 'node_modules/hyperformula/commonjs/index.js'));
  const opciones = { licenseKey: 'gpl-v3', maxRows: 200000, useArrayArithmetic: false };
  const hf = HyperFormula.buildFromArray(leer(), opciones);
  const poner = (fila, valor) => hf.setCellContents({ sheet: 0, row: fila, col: 0 }, valor);
  const trabajos = {
    todo: () => hf.rebuildAndRecalculate(),
    primera: i => poner(0, i + 2),
    medio: i => poner(5000, i + 2),
    editar: i => poner(0, i + 1000),
    insertar: () => hf.addRows(0, [0, 1]),
    pegar: i => poner(0, Array.from({ length: 65536 }, (_, fila) => [fila * 7 + i])),
  };
  if (trabajo === 'editar')
    hf.setCellContents({ sheet: 0, row: 0, col: 20 }, '=A1*2');
  for (let i = 0; i < Number(veces) && (trabajo in trabajos || trabajo === 'archivo'); ++i) {
    if (trabajo === 'archivo') {
      const texto = cronometrar('guardar', () => JSON.stringify(hf.getSheetSerialized(0)));
      cronometrar('abrir', () => HyperFormula.buildFromArray(JSON.parse(texto), opciones));
    } else {
      cronometrar(trabajo, () => trabajos[trabajo](i));
    }
  }
}

async function conIronCalc() {
  if (trabajo !== 'archivo')
    return;
  const carpeta = join(paquetes, 'node_modules/@ironcalc/wasm');
  const { default: iniciar, Model } = await import(join(carpeta, 'wasm.js'));
  await iniciar({ module_or_path: readFileSync(join(carpeta, 'wasm_bg.wasm')) });
  const modelo = new Model('libro', 'en', 'UTC', 'en');
  modelo.pauseEvaluation();
  leer().forEach((fila, f) => fila.forEach((valor, c) => modelo.setUserInput(0, f + 1, c + 1, String(valor))));
  modelo.resumeEvaluation();
  for (let i = 0; i < Number(veces); ++i) {
    const octetos = cronometrar('guardar', () => modelo.toBytes());
    cronometrar('abrir', () => Model.from_bytes(octetos, 'en'));
  }
}

await (programa === 'ironcalc' ? conIronCalc() : conHyperFormula());
