// The page: the window's fields turned into the command line's arguments, run
// by the worker; every field remembered in the browser's storage.
"use strict";

const $ = (id) => document.getElementById(id);
const StoreKey = "glyphwright.fields";
const stored = JSON.parse(localStorage.getItem(StoreKey) || "{}");
const pickedFiles = {};   // input id -> { name, bytes }

// ---- fields and their storage ----
const fields = Array.from(document.querySelectorAll("input:not([type=file]), select"))
  .filter((e) => e.id || e.name);
function keyOf(e) { return e.type === "radio" ? e.name : e.id; }
function saveFields() {
  const values = {};
  for (const e of fields) {
    if (e.type === "radio") { if (e.checked) values[e.name] = e.value; }
    else values[e.id] = e.type === "checkbox" ? e.checked : e.value;
  }
  values.tabs = currentTabs;
  localStorage.setItem(StoreKey, JSON.stringify(values));
}
function restoreFields() {
  for (const e of fields) {
    const v = stored[keyOf(e)];
    if (v === undefined) continue;
    if (e.type === "radio") e.checked = e.value === v;
    else if (e.type === "checkbox") e.checked = v;
    else e.value = v;
  }
}

// ---- tabs (arrow keys move between them, as tab controls do) ----
const currentTabs = { in: "in-font", out: "out-zgly" };
function selectTab(tab, focus) {
  const group = tab.dataset.group;
  for (const t of document.querySelectorAll(`[role=tab][data-group=${group}]`)) {
    const on = t === tab;
    t.setAttribute("aria-selected", on);
    t.tabIndex = on ? 0 : -1;
    $(t.getAttribute("aria-controls")).hidden = !on;
  }
  currentTabs[group] = tab.getAttribute("aria-controls");
  if (focus) tab.focus();
}
for (const tab of document.querySelectorAll("[role=tab]")) {
  tab.addEventListener("click", () => { selectTab(tab); saveFields(); schedulePreview(); });
  tab.addEventListener("keydown", (ev) => {
    const tabs = Array.from(document.querySelectorAll(`[role=tab][data-group=${tab.dataset.group}]`));
    const i = tabs.indexOf(tab);
    const next = { ArrowRight: i + 1, ArrowLeft: i - 1, Home: 0, End: tabs.length - 1 }[ev.key];
    if (next === undefined) return;
    ev.preventDefault();
    selectTab(tabs[(next + tabs.length) % tabs.length], true);
    saveFields(); schedulePreview();
  });
}

// ---- enabling rules of the output fields ----
function applyRules() {
  for (const k of ["alt", "line", "left", "width", "right"]) $("out-" + k).disabled = $(`out-${k}-def`).checked;
  const size = document.querySelector("input[name=cellmode]:checked").value === "size";
  const labels = size ? ["Width", "Height", "Left", "Top"] : ["Left", "Top", "Right", "Bottom"];
  ["a", "b", "c", "d"].forEach((k, i) => { $(`grid-${k}-label`).textContent = labels[i]; });
  $("grid-same-text").textContent = size ? "Place center" : "Right=Left, Bottom=Top";
  const same = $("grid-same").checked;
  $("grid-c").disabled = $("grid-d").disabled = same;
  if (same && !size) { $("grid-c").value = $("grid-a").value; $("grid-d").value = $("grid-b").value; }
  $("font-fixed").disabled = $("font-width").value !== "fixed";
  $("filter-fields").classList.toggle("off", !$("use-filter").checked);
  for (const e of $("filter-fields").querySelectorAll("input")) e.disabled = !$("use-filter").checked;
}

// ---- files ----
function baseName(name) { return name.replace(/\.[^.]*$/, "") || "font"; }
function safeName(name) { return name.replace(/[^A-Za-z0-9._-]/g, "_"); }
for (const input of document.querySelectorAll("input[data-file]")) {
  input.addEventListener("change", async () => {
    const f = input.files[0];
    if (f) pickedFiles[input.id] = { name: safeName(f.name), bytes: new Uint8Array(await f.arrayBuffer()) };
    else delete pickedFiles[input.id];
    schedulePreview();
  });
}

// Installed fonts through the Local Font Access API, where the browser has it
// and the user allows it.
if ("queryLocalFonts" in window) {
  $("local-fonts").hidden = false;
  let localFonts = [];
  $("local-fonts").addEventListener("click", async () => {
    try {
      localFonts = await window.queryLocalFonts();
    } catch (e) {
      showMessages("Installed fonts are not available: " + e.message + "\nChoose a font file instead.");
      return;
    }
    const list = $("local-font-list");
    list.replaceChildren(new Option("(choose an installed font)", ""),
      ...localFonts.map((f, i) => new Option(f.fullName, String(i))));
    list.hidden = false;
    list.focus();
  });
  $("local-font-list").addEventListener("change", async () => {
    const f = localFonts[Number($("local-font-list").value)];
    if (!f) return;
    const blob = await f.blob();
    pickedFiles["font-file"] = { name: safeName(f.postscriptName) + ".ttf", bytes: new Uint8Array(await blob.arrayBuffer()) };
    schedulePreview();
  });
}

// ---- the worker ----
let worker = null, runId = 0;
const pending = new Map();
function startWorker() {
  worker = new Worker("worker.js");
  worker.onmessage = (ev) => {
    if (ev.data.progress !== undefined) {
      if (pending.has(ev.data.id) && converting) {
        $("progress").value = ev.data.progress;
        if (ev.data.status) setStatus(ev.data.status);
      }
      return;
    }
    const done = pending.get(ev.data.id);
    pending.delete(ev.data.id);
    if (done) done(ev.data);
  };
}
function runCli(args, files, want) {
  const id = ++runId;
  return new Promise((resolve) => {
    pending.set(id, resolve);
    worker.postMessage({ id, args, files, want });
  });
}
// Stops whatever runs: the worker is ended and a new one started.
function stopWorker() {
  worker.terminate();
  for (const done of pending.values()) done(null);
  pending.clear();
  startWorker();
}

// ---- the command line from the fields ----
function need(id, what) {
  const f = pickedFiles[id];
  if (!f) throw new Error(`Parameter Error:\n ${what} is not selected.`);
  return f;
}
function inputArgs(files) {
  const put = (f) => { files[f.name] = f.bytes; return f.name; };
  switch (currentTabs.in) {
  case "in-font": {
    // A collection's face other than the first is named FILE#N.
    const face = Number($("font-face").value) || 0;
    const file = put(need("font-file", "Font file")) + (face > 0 ? "#" + face : "");
    const args = ["--from-font", file, "--size", $("font-size").value,
      "--levels", $("font-levels").value, "--width", $("font-width").value];
    if ($("font-width").value === "fixed") args.push("--fixed-width", $("font-fixed").value);
    if ($("font-style").value.trim()) args.push("--style", $("font-style").value.trim());
    if (!$("font-soft").checked) args.push("--no-soft-aa");
    return args;
  }
  case "in-bmp": {
    const order = pickedFiles["bmp-order-file"] ? put(pickedFiles["bmp-order-file"]) : $("bmp-order").value;
    return ["--from-bmp", put(need("bmp-file", "Glyph-grid picture")), "--from-order", order,
      "--colors", $("bmp-colors").value];
  }
  case "in-lc": {
    const args = [];
    if (pickedFiles["lc-file"]) args.push("--from-lc", put(pickedFiles["lc-file"]));
    if (pickedFiles["lc-half"]) args.push("--lc-half", put(pickedFiles["lc-half"]));
    if (!args.length) need("lc-file", "LC Font file");
    if ($("lc-prop").checked) args.push("--lc-proportional");
    if ($("lc-half-prop").checked) args.push("--lc-half-proportional");
    if ($("lc-vertical").checked) args.push("--vertical");
    return args;
  }
  default:
    return ["--from-zgly", put(need("zgly-file", "ZGLY file"))];
  }
}
function filterArgs(files) {
  if (!$("use-filter").checked) return [];
  const args = [];
  const f = pickedFiles["filter-file"];
  if (f) {
    files[f.name] = f.bytes;
    args.push(/\.txt$/i.test(f.name) ? "--chars-file" : "--filter", f.name);
  }
  if ($("filter-chars").value) args.push("--chars", $("filter-chars").value);
  for (const r of $("filter-ranges").value.split(/[\s,]+/).filter(Boolean)) args.push("--range", r);
  if (!args.length) throw new Error("Parameter Error:\n \"Use Filter\" checked, but filter file path not specified.");
  return args;
}
function outputArgs(name) {
  if (currentTabs.out === "out-zgly") {
    const args = ["--to-zgly", name, "--encoding", $("out-encoding").value];
    const rot = document.querySelector("input[name=rotation]:checked");
    if (rot && rot.value !== "0") args.push("--rotation", rot.value);
    if (!$("out-alt-def").checked) args.push("--alt-char", $("out-alt").value);
    for (const [k, opt] of [["line", "--line-height"], ["left", "--default-left"], ["width", "--default-width"],
      ["right", "--default-right"]])
      if (!$(`out-${k}-def`).checked) args.push(opt, $(`out-${k}`).value || "0");
    return args;
  }
  const args = ["--to-bmp", name, "--to-order", $("grid-order").value];
  if (!$("grid-lines").checked) args.push("--no-grid");
  const v = (k) => $(`grid-${k}`).value || "0";
  if (document.querySelector("input[name=cellmode]:checked").value === "size") {
    args.push("--cell", `${v("a")}x${v("b")}`);
    if (!$("grid-same").checked) args.push("--offset", `${v("c")},${v("d")}`);
  } else {
    args.push("--margins", $("grid-same").checked ? `${v("a")},${v("b")}` : `${v("a")},${v("b")},${v("c")},${v("d")}`);
  }
  return args;
}
function outputName() {
  const input = { "in-font": "font-file", "in-bmp": "bmp-file", "in-lc": "lc-file", "in-zgly": "zgly-file" }[currentTabs.in];
  const f = pickedFiles[input] || pickedFiles["lc-half"];
  const base = f ? baseName(f.name) : "font";
  if (currentTabs.out === "out-zgly") return (currentTabs.in === "in-zgly" ? base + "-out" : base) + ".zgly";
  return base + "-grid." + $("grid-format").value;
}

// ---- convert, cancel, messages ----
let converting = false;
function setStatus(text) { $("status").value = text; }
function showMessages(text) {
  $("message-text").textContent = text;
  $("messages").hidden = !text;
}
function lock(on) {
  converting = on;
  $("convert").textContent = on ? "Cancel" : "Convert";
  for (const e of document.querySelectorAll("main form fieldset, .area:not(.run) input, .area:not(.run) select, [role=tab]"))
    if (!e.closest(".preview")) e.inert = on;
  $("progress").value = 0;
}
function download(name, bytes) {
  const url = URL.createObjectURL(new Blob([bytes], { type: "application/octet-stream" }));
  const a = document.createElement("a");
  a.href = url; a.download = name;
  document.body.append(a); a.click(); a.remove();
  setTimeout(() => URL.revokeObjectURL(url), 10000);
}
// The command line's own last line ("Wrote ...") is for terminals, not the message window.
function messagesOf(stderr) {
  return stderr.split("\n").filter((l) => !/^Wrote /.test(l)).join("\n").trim();
}
async function convert() {
  const files = {};
  const name = outputName();
  let args;
  showMessages("");
  setStatus(" Prepairing...");
  try {
    args = ["convert", ...inputArgs(files), ...outputArgs(name), ...filterArgs(files)];
  } catch (e) {
    showMessages(e.message); setStatus(" Convert Error"); return;
  }
  lock(true);
  const result = await runCli(args, files, [name]);
  lock(false);
  if (!result) { setStatus(" Canceled"); return; }
  const text = messagesOf(result.stderr);
  showMessages(text);
  if (result.code === 0 && result.outputs[name]) {
    setStatus(" Finish");
    download(name, result.outputs[name]);
  } else {
    setStatus(" Convert Error");
  }
}
$("form").addEventListener("submit", (ev) => {
  ev.preventDefault();
  if (converting) stopWorker(); else convert();
});

// ---- live preview: the font made from the sample's characters, drawn by
// the command line's preview ----
let previewTimer = null, previewWorker = null, previewSeq = 0;
function schedulePreview() {
  clearTimeout(previewTimer);
  previewTimer = setTimeout(drawPreview, 400);
}
async function drawPreview() {
  const seq = ++previewSeq;
  const note = $("preview-note");
  const files = {};
  let args;
  try {
    const sample = $("sample").value || " ";
    args = ["convert", ...inputArgs(files), "--to-zgly", "preview.zgly", "--quiet"];
    if (currentTabs.in !== "in-bmp") args.push("--chars", sample);
  } catch (e) {
    note.textContent = "Choose an input file to see the preview.";
    return;
  }
  if (!previewWorker) {
    previewWorker = new Worker("worker.js");
  }
  const call = (a, f, want) => new Promise((resolve) => {
    previewWorker.onmessage = (ev) => { if (ev.data.progress === undefined) resolve(ev.data); };
    previewWorker.postMessage({ id: 0, args: a, files: f, want });
  });
  const made = await call(args, files, ["preview.zgly"]);
  if (seq !== previewSeq) return;
  if (made.code !== 0 || !made.outputs["preview.zgly"]) {
    note.textContent = messagesOf(made.stderr) || "No preview.";
    return;
  }
  const pargs = ["preview", "preview.zgly", "--text", $("sample").value || " ", "--out", "preview.png",
    "--zoom", String(Math.min(16, Math.max(1, Number($("zoom").value) || 2)))];
  if ($("guides").checked) pargs.push("--guides");
  const drawn = await call(pargs, { "preview.zgly": made.outputs["preview.zgly"] }, ["preview.png"]);
  if (seq !== previewSeq) return;
  if (drawn.code !== 0 || !drawn.outputs["preview.png"]) { note.textContent = messagesOf(drawn.stderr); return; }
  const image = await createImageBitmap(new Blob([drawn.outputs["preview.png"]], { type: "image/png" }));
  const canvas = $("preview");
  canvas.width = image.width; canvas.height = image.height;
  canvas.getContext("2d").drawImage(image, 0, 0);
  note.textContent = "";
}

// ---- start ----
async function loadOrders() {
  const result = await runCli(["list-orders"], {}, []);
  const names = result.stdout.split("\n").filter(Boolean).map((l) => l.split("\t")[0].replace(/\.xlor$/, ""));
  for (const select of document.querySelectorAll("select.orders")) {
    select.replaceChildren(...names.map((n) => new Option(n, n)));
    select.value = stored[select.id] || "Latin1";
  }
}
startWorker();
restoreFields();
if (stored.tabs) {
  for (const [group, panel] of Object.entries(stored.tabs)) {
    const tab = document.querySelector(`[role=tab][aria-controls=${panel}]`);
    if (tab && tab.dataset.group === group) selectTab(tab);
  }
}
selectTab(document.querySelector(`[aria-controls=${currentTabs.in}]`));
selectTab(document.querySelector(`[aria-controls=${currentTabs.out}]`));
applyRules();
loadOrders();
document.addEventListener("input", (ev) => {
  if (ev.target.type === "file") return;
  applyRules(); saveFields(); schedulePreview();
});
document.addEventListener("change", (ev) => {
  if (ev.target.type === "file") return;
  applyRules(); saveFields(); schedulePreview();
});
