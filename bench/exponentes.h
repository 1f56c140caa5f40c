#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Lo que se admite donde el trabajo es lineal: algo más que 1, porque lo que no cabe en las
/// memorias caché cuesta más por celda que lo que cabe.
inline constexpr double kExponenteMaximo = 1.15;

/// Escribe las medidas como siempre y, al final, con qué exponente crece cada trabajo con su
/// tamaño: la pendiente de la recta que mejor pasa por los logaritmos del tamaño y del tiempo de
/// procesador.
class ReporteExponentes : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& medidas) override {
        for (const Run& medida : medidas) {
            const bool resumen = medida.run_type == Run::RT_Aggregate;
            if (medida.error_occurred || (resumen && medida.aggregate_name != "median") ||
                (!resumen && medida.repetitions > 1))
                continue;
            const double tamano = std::strtod(medida.run_name.args.c_str(), nullptr);
            if (tamano > 0)
                puntos_[medida.run_name.function_name].emplace_back(
                    std::log(tamano), std::log(medida.GetAdjustedCPUTime()));
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
            const bool lineal = !trabajo.starts_with(kCuadratico);
            std::printf("%-44s %5.2f%s\n", trabajo.c_str(), exponente,
                        lineal ? "" : "  (su trabajo crece con el cuadrado)");
            if (lineal)
                peor_ = std::max(peor_, exponente);
        }
    }

    /// El mayor exponente de los trabajos lineales.
    double peor() const { return peor_; }

  private:
    using Puntos = std::vector<std::pair<double, double>>;

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

    /// Comienzo del nombre de los trabajos que no son lineales.
    static constexpr const char* kCuadratico = "cuadrado/";

    std::map<std::string, Puntos> puntos_;
    double peor_ = 0;
};
