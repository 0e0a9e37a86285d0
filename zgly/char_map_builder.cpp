#include "zgly/char_map_builder.h"

#include "zgly/zgly_format.h"

using namespace zgly;

namespace {

// A maximal stretch of list neighbours whose codes rise by exactly 1. Removing
// whole runs never joins two others, so the runs of the full list stay the
// runs of every later list; the remaining ones form a linked list.
struct Run {
    std::size_t First, Last;  // positions in the glyph list
    int Prev, Next;           // neighbouring remaining runs, -1 none
    bool Removed = false;
};

std::vector<Run> SplitRuns(const std::vector<CodeGlyph>& g) {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < g.size();) {
        std::size_t j = i;
        while (j + 1 < g.size() && g[j + 1].Code == g[j].Code + 1) ++j;
        runs.push_back(Run{i, j, -1, -1});
        i = j + 1;
    }
    return runs;
}

class CBuilder {
public:
    CBuilder(const std::vector<CodeGlyph>& glyphs, const std::function<void(int)>& step)
        : G(glyphs), Step(step), Runs(SplitRuns(glyphs)) {
        GlyphOfCode.assign(0x10000, NoGlyph);
        for (const auto& cg : G) GlyphOfCode[cg.Code] = cg.Index;
    }

    std::vector<CharMapBlock> Build() {
        DirectPass();
        Relink();
        TablePass();
        ScanPass();
        return std::move(Blocks);
    }

private:
    uint32_t Length(const Run& r) const { return r.Last - r.First + 1; }
    uint16_t FirstCode(int r) const { return G[Runs[r].First].Code; }
    uint16_t LastCode(int r) const { return G[Runs[r].Last].Code; }

    void DirectPass() {
        for (Run& r : Runs) {
            if (Length(r) < DirectRunLength) continue;
            Blocks.push_back(CharMapBlock{G[r.First].Code, G[r.Last].Code, MethodDirect, {G[r.First].Index}});
            r.Removed = true;
            Step(G[r.Last].Index - G[r.First].Index);
        }
    }

    void Relink() {
        int prev = -1;
        for (int i = 0; i < static_cast<int>(Runs.size()); ++i) {
            if (Runs[i].Removed) continue;
            Runs[i].Prev = prev;
            if (prev >= 0)
                Runs[prev].Next = i;
            else
                Head = i;
            prev = i;
        }
    }

    float Density(uint32_t hits, uint32_t gaps, int run, uint32_t missing) const {
        float taken = static_cast<float>(hits + Length(Runs[run]));
        return taken / (taken + static_cast<float>(gaps + missing));
    }

    void TablePass() {
        for (int pos = Head; pos >= 0;) {
            int first = pos, last = pos;
            uint32_t hits = Length(Runs[pos]), gaps = 0;
            for (;;) {
                int fwd = Runs[last].Next, back = Runs[first].Prev;
                uint32_t fwdMissing = fwd >= 0 ? FirstCode(fwd) - LastCode(last) - 1u : 0;
                uint32_t backMissing = back >= 0 ? FirstCode(first) - LastCode(back) - 1u : 0;
                float fwdDensity = fwd >= 0 ? Density(hits, gaps, fwd, fwdMissing) : 0.0f;
                float backDensity = back >= 0 ? Density(hits, gaps, back, backMissing) : 0.0f;
                if (fwdDensity > backDensity) {
                    if (fwdDensity < 0.5f) break;
                    hits += Length(Runs[fwd]);
                    gaps += fwdMissing;
                    last = fwd;
                } else {
                    if (backDensity < 0.5f) break;
                    hits += Length(Runs[back]);
                    gaps += backMissing;
                    first = back;
                }
            }
            pos = Runs[last].Next;
            if (hits >= TableMinHits) AddTable(first, last);
        }
    }

    void AddTable(int first, int last) {
        CharMapBlock b{FirstCode(first), LastCode(last), MethodTable, {}};
        for (uint32_t c = b.FirstCode; c <= b.LastCode; ++c) b.Data.push_back(GlyphOfCode[c]);
        Blocks.push_back(std::move(b));
        Step(G[Runs[last].Last].Index - G[Runs[first].First].Index);
        // Unlink the region's runs.
        int before = Runs[first].Prev, after = Runs[last].Next;
        for (int r = first;; r = Runs[r].Next) {
            Runs[r].Removed = true;
            if (r == last) break;
        }
        if (before >= 0)
            Runs[before].Next = after;
        else
            Head = after;
        if (after >= 0) Runs[after].Prev = before;
    }

    void ScanPass() {
        CharMapBlock b{0x0000, 0xFFFF, MethodScan, {}};
        for (int r = Head; r >= 0; r = Runs[r].Next)
            for (std::size_t i = Runs[r].First; i <= Runs[r].Last; ++i) {
                b.Data.push_back(G[i].Code);
                b.Data.push_back(G[i].Index);
                Step(1);
            }
        if (!b.Data.empty()) Blocks.push_back(std::move(b));
    }

    const std::vector<CodeGlyph>& G;
    const std::function<void(int)>& Step;
    std::vector<Run> Runs;
    std::vector<uint16_t> GlyphOfCode;
    std::vector<CharMapBlock> Blocks;
    int Head = -1;
};

}  // namespace

std::vector<uint8_t> CharMapBlock::Encode() const {
    std::size_t dataBytes = 2 * Data.size() + (Method == MethodScan ? 2 : 0);
    std::vector<uint8_t> out(CmapHeadSize + dataBytes, 0);
    PutU16(out.data() + CmapFirstCode, FirstCode);
    PutU16(out.data() + CmapLastCode, LastCode);
    PutU16(out.data() + CmapMethod, Method);
    uint8_t* p = out.data() + CmapHeadSize;
    if (Method == MethodScan) {
        PutU16(p, static_cast<uint32_t>(Data.size() / 2));
        p += 2;
    }
    for (uint16_t v : Data) {
        PutU16(p, v);
        p += 2;
    }
    return out;
}

std::vector<CharMapBlock> BuildCharMap(const std::vector<CodeGlyph>& glyphs, const std::function<void(int)>& step) {
    return CBuilder(glyphs, step).Build();
}
