#include "cli/suggestions.h"

#include <algorithm>
#include <cctype>

namespace {

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

}  // namespace

bool SameIgnoringCase(const std::string& a, const std::string& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

int EditDistance(const std::string& a, const std::string& b) {
    const std::size_t n = a.size(), m = b.size();
    // Three rows of the table: two back for a swap of neighbours.
    std::vector<int> before(m + 1), previous(m + 1), row(m + 1);
    for (std::size_t j = 0; j <= m; ++j) previous[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= n; ++i) {
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= m; ++j) {
            const bool same = Lower(a[i - 1]) == Lower(b[j - 1]);
            row[j] = std::min({previous[j] + 1, row[j - 1] + 1, previous[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && Lower(a[i - 1]) == Lower(b[j - 2]) && Lower(a[i - 2]) == Lower(b[j - 1]))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(previous);
        previous.swap(row);
    }
    return previous[m];
}

std::string NearestWord(const std::string& word, const std::vector<std::string>& known) {
    // Dashes are not letters: "--to-zgl" is judged by "to-zgl".
    const std::size_t letters = word.size() - std::min(word.find_first_not_of('-'), word.size());
    const int allowed = std::max<int>(1, static_cast<int>(letters) / 4);
    std::string best;
    int bestDistance = allowed + 1;
    for (const std::string& k : known) {
        const int d = EditDistance(word, k);
        if (d < bestDistance) {
            best = k;
            bestDistance = d;
        }
    }
    return best;
}

std::string DidYouMean(const std::string& word, const std::vector<std::string>& known) {
    const std::string nearest = NearestWord(word, known);
    return nearest.empty() ? "" : " (did you mean " + nearest + "?)";
}
