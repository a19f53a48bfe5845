// The package loads the ways JavaScript users load packages: as an ES module and with
// require() (by its name, through the exports map), as a plain script in a context with
// no Node at all, and from the tarball npm pack makes; its types check with tsc.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import fs from 'node:fs';
import { createRequire } from 'node:module';
import os from 'node:os';
import path from 'node:path';
import { describe, test } from 'node:test';
import vm from 'node:vm';
import { OrvaneParser } from 'orvane-parser';
import { jsFolder, readSamples } from './support.mjs';

const require = createRequire(import.meta.url);
const licence = readSamples().find((s) => s.name === 'aamva-2013-arizona').bytes;

async function answerWith(Parser) {
  const parser = await Parser.load();
  try {
    return parser.parse(licence);
  } finally {
    parser.dispose();
  }
}

function have(command) {
  return spawnSync('sh', ['-c', `command -v ${command}`]).status === 0;
}

describe('loading', () => {
  test('ES module and CommonJS give the same parser', async () => {
    const fromRequire = require('orvane-parser');
    assert.deepEqual(Object.keys(fromRequire), ['OrvaneParser']);
    const expected = await answerWith(OrvaneParser);
    assert.equal(expected.lastName, 'SAMPLE');
    assert.deepEqual(await answerWith(fromRequire.OrvaneParser), expected);
    const fromDefault = (await import('orvane-parser')).default;
    assert.equal(fromDefault, OrvaneParser);
  });

  test('a script tag in a page without Node gets a global, and the code decodes without Buffer', async () => {
    const source = fs.readFileSync(path.join(jsFolder, 'dist', 'orvane-parser.js'), 'utf8');
    const page = vm.createContext({ TextEncoder, TextDecoder, atob, console });
    vm.runInContext(source, page, { filename: 'orvane-parser.js' });
    assert.equal(typeof page.OrvaneParser, 'function');
    assert.equal(page.module, undefined);
    const result = await answerWith(page.OrvaneParser);
    assert.deepEqual(JSON.parse(JSON.stringify(result)), await answerWith(OrvaneParser));
  });

  test('the tarball of npm pack installs and loads both ways', { skip: !have('npm') && 'no npm' }, () => {
    const work = fs.mkdtempSync(path.join(os.tmpdir(), 'orvane-pack-'));
    try {
      const packed = JSON.parse(execFileSync('npm', ['pack', '--ignore-scripts', '--json', '--pack-destination', work],
        { cwd: jsFolder, encoding: 'utf8' }));
      const files = packed[0].files.map((f) => f.path).sort();
      assert.deepEqual(files, ['README.md', 'dist/orvane-parser.d.mts', 'dist/orvane-parser.d.ts', 'dist/orvane-parser.js',
        'dist/orvane-parser.mjs', 'package.json']);
      const app = path.join(work, 'app');
      fs.mkdirSync(app);
      fs.writeFileSync(path.join(app, 'package.json'), '{"name":"app","private":true}');
      execFileSync('npm', ['install', '--offline', '--no-audit', '--no-fund', path.join(work, packed[0].filename)],
        { cwd: app, stdio: 'ignore' });
      const script = (loader) => `${loader}.then(({ OrvaneParser }) => OrvaneParser.load())` +
        `.then((p) => console.log(p.version, p.parse(require('fs').readFileSync(${JSON.stringify(readSamples()[0].file)})).formatName))`;
      const esm = execFileSync(process.execPath, ['--input-type=module', '-e',
        `import { createRequire } from 'node:module'; const require = createRequire(import.meta.url); ${script("import('orvane-parser')")}`],
      { cwd: app, encoding: 'utf8' });
      const cjs = execFileSync(process.execPath, ['-e', script("Promise.resolve(require('orvane-parser'))")], { cwd: app, encoding: 'utf8' });
      assert.match(esm, /^1\.\d+\.\d+ AAMVA/);
      assert.equal(cjs, esm);
    } finally {
      fs.rmSync(work, { recursive: true, force: true });
    }
  });

  test('the declarations type-check a caller, both module kinds', { skip: !have('tsc') && 'no tsc (Debian: node-typescript)' }, () => {
    const work = fs.mkdtempSync(path.join(os.tmpdir(), 'orvane-types-'));
    try {
      fs.mkdirSync(path.join(work, 'node_modules'));
      fs.symlinkSync(jsFolder, path.join(work, 'node_modules', 'orvane-parser'));
      const caller = `
        const parser = await OrvaneParser.load();
        const result: OrvaneResult | null = parser.parse(new Uint8Array(8), { strict: true, barcode: { columns: 20, rows: 15, errorCorrectionLevel: 5 } });
        const name: string | undefined = result?.firstName;
        const elements: Record<string, string> | undefined = result?.elements;
        const verdict: 'valid' | 'invalid' | 'not checkable' | 'symbol out of range' | undefined = result?.barcodeValidationStatus;
        // @ts-expect-error a number is not an input
        parser.parse(42);
        // @ts-expect-error the options have no such member
        parser.parse('x', { strict: true, lenient: true });
        // @ts-expect-error a parser comes from load()
        new OrvaneParser();
        const version: string = parser.version;
        parser.dispose();
        export { name, elements, verdict, version };
      `;
      fs.writeFileSync(path.join(work, 'esm.mts'), `import OrvaneParser, { type OrvaneResult } from 'orvane-parser';\n${caller}`);
      fs.writeFileSync(path.join(work, 'cjs.cts'), `import { OrvaneParser, type OrvaneResult } from 'orvane-parser';\nasync function main() {\n${caller.replace(/export .*/, 'return [name, elements, verdict, version];')}\n}\nexport = main;\n`);
      fs.writeFileSync(path.join(work, 'tsconfig.json'), JSON.stringify({
        compilerOptions: { strict: true, noEmit: true, target: 'es2022', module: 'node16', moduleResolution: 'node16', types: [] },
        files: ['esm.mts', 'cjs.cts'],
      }));
      const run = spawnSync('tsc', ['-p', work], { cwd: work, encoding: 'utf8' });
      assert.equal(run.status, 0, run.stdout + run.stderr);
    } finally {
      fs.rmSync(work, { recursive: true, force: true });
    }
  });
});
