// The glyph order the grid reader's target reads every picture against, and
// the seed generator draws its pictures for: 4 x 2 cells with a space and an
// empty cell.
extern const char* const FuzzGridOrder;
const char* const FuzzGridOrder =
    "<?xml version=\"1.0\"?><letter-order version=\"1.0\"><body><area width=\"4\" height=\"2\"/>"
    "<order>AB<sp/>g<null/>xy&#x3042;</order></body></letter-order>";
