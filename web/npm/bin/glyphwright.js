#!/usr/bin/env node
// The command line compiled to WebAssembly: it reads the arguments from
// process.argv and sets the exit status itself.
require("../lib/glyphwright-cli.js");
