#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

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
            if (puntos.size() > 1)
                std::printf("%-44s %5.2f\n", trabajo.c_str(), pendiente(puntos));
        }
    }

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

    std::map<std::string, Puntos> puntos_;
};
