// Runs the command line's WebAssembly on files held in memory. One fresh
// instance per run (the program ends after each); the compiled module is kept.
importScripts("glyphwright-web.js");

let compiled = null;

async function compiledModule() {
  if (!compiled) compiled = WebAssembly.compileStreaming(fetch("glyphwright-web.wasm"));
  return compiled;
}

// The command line's standard error, byte by byte: its progress line
// ("\r\x1b[K[###...]  42% Status") becomes progress messages, every other
// line is kept as the run's messages.
function errorReader(id, lines) {
  const decoder = new TextDecoder();
  let bytes = [];
  const segment = () => {
    const text = decoder.decode(new Uint8Array(bytes)).replace(/^\x1b\[K/, "");
    bytes = [];
    return text;
  };
  return (ch) => {
    if (ch === null || ch === undefined) return;
    if (ch !== 10 && ch !== 13) { bytes.push(ch); return; }
    const text = segment();
    const bar = /^\[[#.]*\]\s*(\d+)%(.*)$/.exec(text);
    if (bar) postMessage({ id, progress: Number(bar[1]), status: bar[2] });
    else if (ch === 10) lines.push(text);
  };
}

// args: the command line after the program name; files: name -> bytes put in
// the working folder; want: the output file names to hand back.
async function run({ id, args, files, want }) {
  const module = await compiledModule();
  const out = [], err = [];
  const program = await createGlyphwright({
    noInitialRun: true,
    terminalColumns: 80,
    instantiateWasm(imports, done) {
      WebAssembly.instantiate(module, imports).then((instance) => done(instance));
      return {};
    },
    print: (line) => out.push(line),
    stderr: errorReader(id, err),
  });
  program.FS.mkdir("/work");
  program.FS.chdir("/work");
  for (const [name, bytes] of Object.entries(files)) program.FS.writeFile(name, bytes);
  const code = program.callMain(args);
  const outputs = {};
  for (const name of want) {
    try { outputs[name] = program.FS.readFile(name); } catch (e) { /* not written */ }
  }
  postMessage({ id, code, stdout: out.join("\n"), stderr: err.join("\n"), outputs },
    Object.values(outputs).map((b) => b.buffer));
}

onmessage = (event) => {
  run(event.data).catch((e) => postMessage({ id: event.data.id, code: -1, stdout: "",
    stderr: "Internal Error:\n " + e, outputs: {} }));
};
