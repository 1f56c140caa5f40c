#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Lo que se admite donde el trabajo es lineal: algo más que 1, porque lo que no cabe en las
/// memorias caché cuesta más por celda que lo que cabe.
inline constexpr double kExponenteMaximo = 1.15;

/// Escribe las medidas como siempre y, al final, con qué exponente crece cada trabajo con su
/// tamaño: la pendiente de la recta que mejor pasa por los logaritmos del tamaño y del tiempo de
/// procesador. De las repeticiones vale la más rápida: lo que hacen otros en la máquina solo suma.
class ReporteExponentes : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& medidas) override {
        for (const Run& medida : medidas) {
            const double tamano = std::strtod(medida.run_name.args.c_str(), nullptr);
            if (medida.run_type == Run::RT_Aggregate || medida.error_occurred || tamano <= 0)
                continue;
            const double tiempo = std::log(medida.GetAdjustedCPUTime());
            auto& puntos = puntos_[medida.run_name.function_name];
            const auto [punto, nuevo] = puntos.try_emplace(std::log(tamano), tiempo);
            if (!nuevo)
                punto->second = std::min(punto->second, tiempo);
        }
        ConsoleReporter::ReportRuns(medidas);
    }

    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\nExponentes del tiempo sobre el tamaño\n");
        for (const auto& [trabajo, puntos] : puntos_) {
            if (puntos.size() < 2)
                continue;
            const double exponente = pendiente(puntos);
            const char* const nota = porque(trabajo);
            std::printf("%-44s %5.2f%s\n", trabajo.c_str(), exponente, nota);
            const bool lineal = *nota == '\0';
            if (lineal)
                peor_ = std::max(peor_, exponente);
        }
    }

    /// El mayor exponente de los trabajos lineales.
    double peor() const { return peor_; }

  private:
    using Puntos = std::map<double, double>; ///< logaritmo del tiempo por el del tamaño

    /// Por qué no es lineal un trabajo, según cómo empieza su nombre; vacío si lo es.
    static const char* porque(std::string_view trabajo) {
        if (trabajo.starts_with("cuadrado/"))
            return "  (su trabajo crece con el cuadrado)";
        if (trabajo.starts_with("ordenar/"))
            return "  (su trabajo crece con n·log n: 1,10)";
        return "";
    }

    static double pendiente(const Puntos& puntos) {
        double x = 0;
        double y = 0;
        double xx = 0;
        double xy = 0;
        for (const auto& [tamano, tiempo] : puntos) {
            x += tamano;
            y += tiempo;
            xx += tamano * tamano;
            xy += tamano * tiempo;
        }
        const auto n = static_cast<double>(puntos.size());
        return (n * xy - x * y) / (n * xx - x * x);
    }

    std::map<std::string, Puntos> puntos_;
    double peor_ = 0;
};
