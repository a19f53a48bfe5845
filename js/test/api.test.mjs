// The JavaScript API: what each kind of input means, the options, the errors a caller can
// make, and the life of a parser.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, describe, test } from 'node:test';
import { OrvaneParser } from 'orvane-parser';
import { jsFolder, latin1, readSamples } from './support.mjs';

const samples = readSamples();
const sample = (name) => samples.find((s) => s.name === name).bytes;
const licence = sample('aamva-2013-arizona');
const mexican = sample('national-mexico-latin1'); // Latin-1 text with accented capitals
const utf8 = (text) => new TextEncoder().encode(text);

let parser;
before(async () => {
  parser = await OrvaneParser.load();
});
after(() => parser.dispose());

describe('input', () => {
  // Each form of the same document gives the answer its bytes give.
  const forms = [
    ['a Latin-1 string', () => latin1(mexican), mexican],
    ['a Buffer', () => Buffer.from(mexican), mexican],
    ['an ArrayBuffer', () => mexican.slice().buffer, mexican],
    ['a DataView over part of a buffer', () => {
      const room = new Uint8Array(mexican.length + 20);
      room.set(mexican, 10);
      return new DataView(room.buffer, 10, mexican.length);
    }, mexican],
    ['a string beyond Latin-1, as UTF-8', () => latin1(licence).replace('SAMPLE', 'SAMPŁE'), utf8(latin1(licence).replace('SAMPLE', 'SAMPŁE'))],
  ];
  for (const [name, make, bytes] of forms) {
    test(name, () => {
      for (const strict of [false, true]) {
        const expected = parser.parse(bytes, { strict });
        assert.ok(expected, 'the bytes are recognised');
        assert.deepEqual(parser.parse(make(), { strict }), expected, strict ? 'strict' : 'lenient');
      }
    });
  }

  test('a string that fits Latin-1 is not taken as UTF-8', () => {
    const text = latin1(mexican);
    assert.match(text, /[\u0080-\u00ff]/);
    const asUtf8 = parser.parse(utf8(text), { strict: true });
    assert.notDeepEqual(parser.parse(text, { strict: true }), asUtf8);
  });

  test('nothing recognised gives null', () => {
    for (const input of ['', new Uint8Array(0), new ArrayBuffer(0), 'hello', ' \n\n ', '@', 'P<', latin1(licence).slice(0, 12)]) {
      assert.equal(parser.parse(input), null, JSON.stringify(typeof input === 'string' ? input : `${input.byteLength} bytes`));
    }
  });

  test('input of another type is a TypeError', () => {
    for (const input of [undefined, null, 42, true, {}, [64, 10], Symbol('x'), () => 'x', new Set()]) {
      assert.throws(() => parser.parse(input), TypeError, String(input && input.toString ? typeof input : input));
    }
  });
});

describe('options', () => {
  test('the lenient parse repairs UTF-8 text of a Latin-1 document; the strict one reads it as it is', () => {
    const damaged = utf8(latin1(mexican));
    const lenient = parser.parse(damaged);
    const strict = parser.parse(damaged, { strict: true });
    assert.ok(lenient.repairs.includes('utf8-to-latin1'));
    assert.equal(strict.repairs, undefined);
    assert.equal(lenient.lastName, parser.parse(mexican).lastName);
    assert.notEqual(strict.lastName, lenient.lastName);
    assert.deepEqual(parser.parse(damaged, {}), lenient, 'lenient is the default');
    assert.deepEqual(parser.parse(damaged, { strict: false, barcode: null }), lenient);
  });

  const badOptions = [
    ['options that are not an object', 'strict'],
    ['a barcode that is not an object', { barcode: '20,15,5' }],
    ['a barcode without its level', { barcode: { columns: 20, rows: 15 } }],
    ['a barcode size as a string', { barcode: { columns: '20', rows: 15, errorCorrectionLevel: 5 } }],
    ['a fractional barcode size', { barcode: { columns: 20, rows: 15.5, errorCorrectionLevel: 5 } }],
    ['a barcode size that is not a number', { barcode: { columns: 20, rows: 15, errorCorrectionLevel: NaN } }],
  ];
  for (const [name, options] of badOptions) {
    test(`${name} is a TypeError`, () => {
      assert.throws(() => parser.parse(licence, options), TypeError);
    });
  }
});

describe('parser', () => {
  test('the version is the package version', () => {
    const pkg = JSON.parse(fs.readFileSync(path.join(jsFolder, 'package.json'), 'utf8'));
    assert.equal(parser.version, pkg.version);
  });

  test('each result is a fresh object that the next parse leaves alone', () => {
    const first = parser.parse(licence);
    const copy = structuredClone(first);
    first.firstName = 'CHANGED';
    first.elements.DAQ = 'CHANGED';
    parser.parse(sample('mrz-passport'));
    assert.deepEqual(parser.parse(licence), copy);
  });

  test('a disposed parser refuses to parse; disposing again is harmless', async () => {
    const doomed = await OrvaneParser.load();
    doomed.dispose();
    doomed.dispose();
    assert.throws(() => doomed.parse(licence), /disposed/);
  });

  test('a parser is made by load(), not by new', () => {
    assert.throws(() => new OrvaneParser(), TypeError);
  });
});
