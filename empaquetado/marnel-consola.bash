# Completado de bash para marnel-consola.

_marnel_consola() {
  local actual=${COMP_WORDS[COMP_CWORD]} anterior=${COMP_WORDS[COMP_CWORD - 1]} orden=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W \
      'evaluar mostrar convertir imprimir recalcular funciones --ayuda --version' -- "$actual")
    return
  fi
  case $anterior in
    --hoja | --rango | --separador | --separador-entrada) return ;;
    --papel)
      mapfile -t COMPREPLY < <(compgen -W 'A4 A3 A5 carta' -- "$actual")
      return
      ;;
    --libro)
      mapfile -t COMPREPLY < <(compgen -f -X '!*.mrn' -- "$actual")
      return
      ;;
    --formato)
      mapfile -t COMPREPLY < <(compgen -f -- "$actual")
      return
      ;;
  esac
  if [[ $actual == --* ]]; then
    local opciones=--ayuda
    case $orden in
      evaluar) opciones+=' --libro --hoja' ;;
      mostrar) opciones+=' --hoja --rango --formulas --json' ;;
      convertir)
        opciones+=' --hoja --valores --sin-formulas --separador --separador-entrada --formato'
        ;;
      imprimir) opciones+=' --hoja --todas --rango --papel --horizontal --ajustar --encabezados' ;;
      recalcular | funciones) opciones+=' --json' ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$opciones" -- "$actual")
    return
  fi
  case $orden in
    mostrar | recalcular) mapfile -t COMPREPLY < <(compgen -f -X '!*.mrn' -- "$actual") ;;
    imprimir) mapfile -t COMPREPLY < <(compgen -f -X '!*.@(mrn|pdf|png)' -- "$actual") ;;
    convertir) mapfile -t COMPREPLY < <(compgen -f -X '!*.@(mrn|tsv|csv)' -- "$actual") ;;
    funciones)
      mapfile -t COMPREPLY < <(compgen -W \
        "$(marnel-consola funciones 2>/dev/null | sed 's/(.*//')" -- "${actual^^}")
      ;;
  esac
}
shopt -s extglob
complete -o filenames -F _marnel_consola marnel-consola
