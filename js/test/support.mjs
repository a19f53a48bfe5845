// What the package's tests share: the tree's folders, the samples, the peers' inputs and
// the native command-line tool that the WebAssembly answers are held against.
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

export const jsFolder = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '..');
export const root = path.resolve(jsFolder, '..');
export const samplesFolder = path.join(root, 'samples');
export const peersFolder = path.resolve(root, '..', 'shared', 'peers');
export const tool = process.env.ORVANE_PARSE || path.join(root, 'build', 'tools', 'orvane-parse');
export const toolMissing = fs.existsSync(tool) ? false : `no ${tool}: build the native tree first (cmake --build build)`;

export function readSamples() {
  return fs.readdirSync(samplesFolder).filter((name) => name.endsWith('.txt')).sort().map((name) => {
    const file = path.join(samplesFolder, name);
    return { name: name.slice(0, -4), file, bytes: new Uint8Array(fs.readFileSync(file)) };
  });
}

// Every input of the other parsers' suites, or none when their folder is absent.
export function readPeerInputs() {
  if (!fs.existsSync(peersFolder)) return [];
  const inputs = [];
  for (const name of fs.readdirSync(peersFolder).filter((n) => n.endsWith('.jsonl')).sort()) {
    fs.readFileSync(path.join(peersFolder, name), 'utf8').split('\n').forEach((line, index) => {
      if (!line.trim()) return;
      const entry = JSON.parse(line);
      if (typeof entry.input_b64 !== 'string') return;
      inputs.push({ name: `${name}:${index + 1}`, bytes: new Uint8Array(Buffer.from(entry.input_b64, 'base64')) });
    });
  }
  return inputs;
}

// The tool's object for each input, in order, with its "input" member removed.
export function toolResults(inputs, args = []) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'orvane-js-'));
  try {
    const files = inputs.map((input, index) => {
      const file = path.join(folder, `${index}.txt`);
      fs.writeFileSync(file, input.bytes);
      return file;
    });
    const run = spawnSync(tool, [...args, ...files], { encoding: 'latin1', maxBuffer: 1 << 28 });
    if (run.error) throw run.error;
    const lines = run.stdout.split('\n').filter(Boolean);
    if (lines.length !== inputs.length) throw new Error(`orvane-parse printed ${lines.length} objects for ${inputs.length} inputs`);
    return lines.map((line) => {
      const { input, ...result } = JSON.parse(line);
      return result;
    });
  } finally {
    fs.rmSync(folder, { recursive: true, force: true });
  }
}

// A small, seeded generator, so that a failing random input can be made again.
export function seededRandom(seed) {
  let state = seed >>> 0;
  return () => {
    state = (state + 0x6d2b79f5) >>> 0;
    let t = state;
    t = Math.imul(t ^ (t >>> 15), t | 1);
    t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
    return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
  };
}

export function latin1(bytes) {
  return Buffer.from(bytes.buffer, bytes.byteOffset, bytes.byteLength).toString('latin1');
}
