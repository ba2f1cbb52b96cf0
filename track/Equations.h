// Small systems of linear equations with a symmetric, positive matrix.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace track {

template <std::size_t N>
struct Equations {
    std::array<double, N * N> matrix{}; ///< the lower triangle counts
    std::array<double, N> right{};

    /// Adds an observation: `weight` * (row . x - value)^2 is to be small.
    template <typename T>
    void add(const std::array<T, N>& row, double value, double weight) {
        for (std::size_t i = 0; i < N; ++i) {
            const double scaled = weight * static_cast<double>(row[i]);
            for (std::size_t j = 0; j <= i; ++j) {
                matrix[i * N + j] += scaled * static_cast<double>(row[j]);
            }
            right[i] += scaled * value;
        }
    }

    /// Adds what is known before: x[i] is about `value`, give or take `deviation`.
    void addPrior(std::size_t i, double value, double deviation) {
        matrix[i * N + i] += 1 / (deviation * deviation);
        right[i] += value / (deviation * deviation);
    }

    /// Solves by Cholesky's factors (Golub and Van Loan, "Matrix Computations", section 4.2), the
    /// solution in `right`. False, with the contents spoiled, when the matrix is not positive.
    [[nodiscard]] bool solve() {
        for (std::size_t i = 0; i < N; ++i) {
            for (std::size_t j = 0; j <= i; ++j) {
                double sum = matrix[i * N + j];
                for (std::size_t k = 0; k < j; ++k) {
                    sum -= matrix[i * N + k] * matrix[j * N + k];
                }
                if (i != j) {
                    matrix[i * N + j] = sum / matrix[j * N + j];
                } else if (sum > 1e-12) {
                    matrix[i * N + i] = std::sqrt(sum);
                } else {
                    return false;
                }
            }
        }
        for (std::size_t i = 0; i < N; ++i) {
            for (std::size_t k = 0; k < i; ++k) {
                right[i] -= matrix[i * N + k] * right[k];
            }
            right[i] /= matrix[i * N + i];
        }
        for (std::size_t i = N; i-- > 0;) {
            for (std::size_t k = i + 1; k < N; ++k) {
                right[i] -= matrix[k * N + i] * right[k];
            }
            right[i] /= matrix[i * N + i];
        }
        return true;
    }

    /// How uncertain x[i] is, once solved: its place on the diagonal of the inverse.
    [[nodiscard]] double variance(std::size_t i) const {
        std::array<double, N> row{};
        row[i] = 1;
        double sum = 0;
        for (std::size_t k = i; k < N; ++k) {
            for (std::size_t j = i; j < k; ++j) {
                row[k] -= matrix[k * N + j] * row[j];
            }
            row[k] /= matrix[k * N + k];
            sum += row[k] * row[k];
        }
        return sum;
    }
};

} // namespace track
