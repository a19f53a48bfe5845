#!/usr/bin/env node
// Times the WebAssembly parse beside the npm parsers users pick instead, in one Node
// process, on the benchmark inputs beside the project (../shared/bench-peers/inputs).
//
//   npm ci && node bench.mjs [--rounds N] [--min-ms MS] [--inputs DIR] [--only a,b] [--json FILE]
//
//   --rounds N     rounds over every contender and input (default 7)
//   --min-ms MS    least time of one timing (default 300)
//   --inputs DIR   the inputs, NAME.txt each (default ../shared/bench-peers/inputs)
//   --only a,b     only these peers, by the names in the table (ours always runs)
//   --json FILE    also write every timing as JSON
//
// Each contender gets the input as a string (Latin-1, one character a byte), as the
// peers take it; ours returns its whole result object. Rounds run every contender on
// every input in turn, so that machine noise falls on all of them alike; the table gives
// medians in microseconds per parse. Before timing, each contender's answer is checked.
// Compare ratios from one run; the machine is shared and absolute times drift.
import fs from 'node:fs';
import { createRequire } from 'node:module';
import os from 'node:os';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const require = createRequire(import.meta.url);

function options(argv) {
  const o = { rounds: 7, minMs: 300, inputs: path.resolve(here, '..', '..', '..', 'shared', 'bench-peers', 'inputs'), only: null, json: null };
  for (let i = 0; i < argv.length; i++) {
    const value = () => argv[++i];
    switch (argv[i]) {
      case '--rounds': o.rounds = Number(value()); break;
      case '--min-ms': o.minMs = Number(value()); break;
      case '--inputs': o.inputs = path.resolve(value()); break;
      case '--only': o.only = value().split(','); break;
      case '--json': o.json = value(); break;
      case '-h':
      case '--help':
        process.stdout.write(fs.readFileSync(fileURLToPath(import.meta.url), 'utf8').split('\n').slice(1, 17)
          .map((line) => line.replace(/^\/\/ ?/, '')).join('\n') + '\n');
        process.exit(0);
        break;
      default: throw new Error(`unknown option ${argv[i]} (see the head of bench.mjs)`);
    }
  }
  return o;
}

// What a right answer holds for each input.
const EXPECTED = {
  'aamva-v08': { last: 'DOE', first: 'JANE', middle: 'ALEXANDRA', dob: '1985-04-12', id: 'T12345678' },
  'aamva-v01': { last: 'DOE', first: 'JANE', middle: 'ALEXANDRA', dob: '1985-04-12', id: 'T12345678' },
  'aamva-v05': { last: 'DOE', first: 'JANE', middle: 'ALEXANDRA', dob: '1985-04-12', id: 'T12345678' },
  'stripe-tx': { last: 'DOE', first: 'JANE', middle: 'ALEXANDRA', dob: '1985-04-12', id: '1234567890' },
  'mrz-td3': { last: 'DOE', first: 'JANE ALEXANDRA', dob: '1985-04-12', id: 'Z83917462' },
  'mrz-td1': { last: 'DOE', first: 'JANE ALEXANDRA', dob: '1985-04-12', id: 'XR4K81N62' },
};
const BARCODES = ['aamva-v08', 'aamva-v01', 'aamva-v05'];
const ZONES = ['mrz-td3', 'mrz-td1'];

const pad2 = (n) => String(n).padStart(2, '0');
const isoOfDate = (d) => (d instanceof Date ? `${d.getFullYear()}-${pad2(d.getMonth() + 1)}-${pad2(d.getDate())}` : d);
const isoOfCompact = (s) => (/^\d{8}$/.test(s) ? `${s.slice(0, 4)}-${s.slice(4, 6)}-${s.slice(6)}` : s);
const isoOfZone = (s) => (/^\d{6}$/.test(s) ? `${Number(s.slice(0, 2)) > new Date().getFullYear() % 100 ? 19 : 20}${s.slice(0, 2)}-${s.slice(2, 4)}-${s.slice(4)}` : s);

// Each peer: its package, the inputs it reads, how it is called and how its answer reads.
const PEERS = [
  { name: 'parse-usdl', pkg: 'parse-usdl', inputs: BARCODES, load: () => { const m = require('parse-usdl'); return (s) => m.parse(s); },
    read: (r) => ({ last: r.lastName, first: r.firstName, middle: r.middleName, dob: r.dateOfBirth, id: r.documentNumber }) },
  { name: 'aamva-parser', pkg: 'aamva-parser', inputs: BARCODES, load: () => { const m = require('aamva-parser'); return (s) => m.parse(s); },
    read: (r) => ({ last: r.lastName, first: r.firstName, middle: r.middleName, dob: isoOfDate(r.dateOfBirth), id: r.driversLicenseId }) },
  { name: 'aamvajs', pkg: 'aamvajs', inputs: BARCODES, load: () => { const m = require('aamvajs'); return (s) => m.raw(s); },
    read: (r) => ({ last: r.data.familyName, first: r.data.firstName, middle: r.data.middleName, dob: r.data.dateOfBirth, id: r.data.idNumber }) },
  { name: 'aamva (pdf417)', pkg: 'aamva', inputs: BARCODES, load: () => { const m = require('aamva'); return (s) => m.pdf417(s); },
    read: (r) => ({ last: r.name?.last, first: r.name?.first, middle: r.name?.middle, dob: isoOfCompact(r.birthday), id: r.id }) },
  { name: 'aamva (stripe)', pkg: 'aamva', inputs: ['stripe-tx'], load: () => { const m = require('aamva'); return (s) => m.stripe(s); },
    read: (r) => ({ last: r.name?.last, first: r.name?.first, middle: r.name?.middle, dob: isoOfCompact(r.birthday), id: r.id }) },
  { name: 'mrz', pkg: 'mrz', inputs: ZONES, load: async () => { const m = await import('mrz'); return (s) => m.parse(s); },
    read: (r) => ({ last: r.fields.lastName, first: r.fields.firstName, dob: isoOfZone(r.fields.birthDate), id: r.fields.documentNumber }) },
];

function readOurs(r) {
  const zone = r.formatGroup === 5;
  return {
    last: r.lastName,
    first: zone && r.middleName ? `${r.firstName} ${r.middleName}` : r.firstName,
    middle: zone ? undefined : r.middleName,
    dob: r.birthdateISO,
    id: r.licenseNumber,
  };
}

function checkAnswer(input, read, result) {
  const expected = EXPECTED[input];
  if (!expected) return 'ok';
  let got;
  try {
    got = read(result) || {};
  } catch {
    got = {};
  }
  const wrong = Object.keys(expected).filter((k) => got[k] !== expected[k]).map((k) => `${k}=${JSON.stringify(got[k])}`);
  return wrong.length ? `partial: ${wrong.join(', ')}` : 'ok';
}

function version(pkg) {
  try {
    return JSON.parse(fs.readFileSync(path.join(here, 'node_modules', pkg, 'package.json'), 'utf8')).version;
  } catch {
    return null;
  }
}

async function contenders(o) {
  const list = [];
  const { OrvaneParser } = await import('../dist/orvane-parser.mjs');
  const parser = await OrvaneParser.load();
  list.push({ name: `orvane-parser ${parser.version} (WebAssembly)`, ours: true, inputs: null, fn: (s) => parser.parse(s), read: readOurs });
  const missing = [];
  for (const peer of PEERS) {
    if (o.only && !o.only.includes(peer.name)) continue;
    if (!version(peer.pkg)) {
      missing.push(peer.pkg);
      continue;
    }
    list.push({ name: `${peer.name}@${version(peer.pkg)}`, inputs: peer.inputs, fn: await peer.load(), read: peer.read });
  }
  if (missing.length) process.stderr.write(`peers not installed (npm ci in js/bench): ${[...new Set(missing)].join(' ')}\n`);
  return list;
}

// Calls per batch so that a clock read costs next to nothing, found in a short warm-up.
function warm(fn, arg) {
  let n = 0;
  const start = process.hrtime.bigint();
  while (n < 50 || process.hrtime.bigint() - start < 100_000_000n) {
    fn(arg);
    n++;
  }
  const each = Number(process.hrtime.bigint() - start) / n;
  return Math.max(1, Math.round(200_000 / each));
}

let sink = 0;
function time(fn, arg, batch, minMs) {
  const least = BigInt(Math.round(minMs * 1e6));
  let calls = 0;
  const start = process.hrtime.bigint();
  let elapsed;
  do {
    for (let i = 0; i < batch; i++) if (fn(arg) == null) sink++;
    calls += batch;
    elapsed = process.hrtime.bigint() - start;
  } while (elapsed < least);
  return Number(elapsed) / calls / 1000;
}

const median = (xs) => {
  const s = xs.slice().sort((a, b) => a - b);
  const m = s.length >> 1;
  return s.length % 2 ? s[m] : (s[m - 1] + s[m]) / 2;
};
const us = (x) => (x == null ? '-' : x < 1 ? x.toFixed(3) : x.toFixed(2));

async function main() {
  const o = options(process.argv.slice(2));
  // One peer prints a line on every parse; the table is written to stdout directly.
  for (const k of ['log', 'warn', 'error', 'info', 'debug']) console[k] = () => {};
  if (!fs.existsSync(o.inputs)) throw new Error(`no inputs at ${o.inputs} (give --inputs DIR)`);
  const inputs = fs.readdirSync(o.inputs).filter((f) => f.endsWith('.txt')).map((f) => f.slice(0, -4))
    .sort((a, b) => (Object.keys(EXPECTED).indexOf(a) + 1 || 99) - (Object.keys(EXPECTED).indexOf(b) + 1 || 99));
  const list = await contenders(o);
  const runs = [];
  for (const input of inputs) {
    const text = fs.readFileSync(path.join(o.inputs, `${input}.txt`)).toString('latin1');
    for (const c of list) {
      if (c.inputs && !c.inputs.includes(input)) continue;
      let status;
      try {
        status = checkAnswer(input, c.read, c.fn(text));
      } catch (e) {
        status = `throws: ${String(e && e.message).split('\n')[0].slice(0, 60)}`;
      }
      const run = { input, bytes: text.length, contender: c.name, ours: Boolean(c.ours), status, text, fn: c.fn, samples: [] };
      if (!status.startsWith('throws')) run.batch = warm(c.fn, text);
      runs.push(run);
    }
  }
  const timed = runs.filter((r) => r.batch);
  for (let round = 0; round < o.rounds; round++) {
    // A different order each round, so that no contender always follows the same one.
    const order = timed.map((r, i) => [(i * 7919 + round * 104729) % 1000003, r]).sort((a, b) => a[0] - b[0]).map((x) => x[1]);
    for (const r of order) r.samples.push(time(r.fn, r.text, r.batch, o.minMs));
    process.stderr.write(`round ${round + 1} of ${o.rounds}\n`);
  }
  for (const r of timed) r.us = median(r.samples);

  const out = (s) => process.stdout.write(`${s}\n`);
  const cpu = os.cpus()[0]?.model || 'unknown cpu';
  out(`# ${new Date().toISOString()}  node ${process.version}, ${os.cpus().length} cores (${cpu}); ${o.rounds} rounds of >= ${o.minMs} ms each, medians`);
  out('');
  out('| input | bytes | fastest peer | peer us | ours us | peer / ours |');
  out('|---|---:|---|---:|---:|---:|');
  const summary = [];
  for (const input of inputs) {
    const ours = timed.find((r) => r.input === input && r.ours);
    const peers = timed.filter((r) => r.input === input && !r.ours && r.status === 'ok');
    const best = peers.length ? peers.reduce((a, b) => (a.us <= b.us ? a : b)) : null;
    const ratio = best && ours ? best.us / ours.us : null;
    summary.push({ input, bytes: ours ? ours.bytes : null, fastestPeer: best?.contender ?? null, peerUs: best?.us ?? null, oursUs: ours?.us ?? null, ratio });
    out(`| ${input} | ${ours ? ours.bytes : '-'} | ${best ? best.contender : '-'} | ${us(best?.us)} | ${us(ours?.us)} | ${ratio ? ratio.toFixed(2) + 'x' : '-'} |`);
  }
  out('');
  out('Every contender (us per parse, median; spread is (max - min) / median over the rounds):');
  out('');
  out('| input | contender | answer | us | spread |');
  out('|---|---|---|---:|---:|');
  for (const r of runs) {
    const spread = r.samples.length ? ((Math.max(...r.samples) - Math.min(...r.samples)) / r.us) * 100 : null;
    out(`| ${r.input} | ${r.contender} | ${r.status} | ${us(r.us)} | ${spread == null ? '-' : spread.toFixed(0) + '%'} |`);
  }
  out('');
  out('peer / ours above 1: ours is faster. Peers whose answer is not right are not candidates for fastest.');
  if (o.json) {
    fs.writeFileSync(o.json, JSON.stringify({ date: new Date().toISOString(), node: process.version, rounds: o.rounds, minMs: o.minMs, summary,
      runs: runs.map(({ text, fn, batch, ...r }) => r) }, null, 2) + '\n');
  }
  if (sink < 0) out(String(sink));
}

main().catch((e) => {
  process.stderr.write(`${e && e.stack ? e.stack : e}\n`);
  process.exit(1);
});
