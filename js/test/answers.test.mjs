// The WebAssembly build answers exactly what the native command-line tool answers: every
// sample and every input of the other parsers' suites, leniently and strictly, and with a
// barcode symbol to check.
import assert from 'node:assert/strict';
import { after, before, describe, test } from 'node:test';
import { OrvaneParser } from 'orvane-parser';
import { readPeerInputs, readSamples, toolMissing, toolResults } from './support.mjs';

let parser;
before(async () => {
  parser = await OrvaneParser.load();
});
after(() => parser.dispose());

function expectSameAnswers(inputs, toolArgs, options) {
  const expected = toolResults(inputs, toolArgs);
  let recognised = 0;
  inputs.forEach((input, index) => {
    const ours = parser.parse(input.bytes, options);
    const theirs = expected[index];
    if (theirs.status !== 0) {
      assert.equal(ours, null, `${input.name}: the tool answered status ${theirs.status}`);
      return;
    }
    recognised++;
    assert.deepEqual(ours, theirs, input.name);
  });
  return recognised;
}

const modes = [
  { name: 'lenient', toolArgs: [], options: undefined },
  { name: 'strict', toolArgs: ['--strict'], options: { strict: true } },
];

describe('same answers as orvane-parse', { skip: toolMissing }, () => {
  const samples = readSamples();
  for (const mode of modes) {
    test(`every sample, ${mode.name}`, () => {
      assert.equal(expectSameAnswers(samples, mode.toolArgs, mode.options), samples.length, 'every sample is recognised');
    });
  }

  const peers = readPeerInputs();
  for (const mode of modes) {
    test(`the other parsers' inputs, ${mode.name}`, { skip: peers.length === 0 && 'no ../shared/peers' }, (t) => {
      const recognised = expectSameAnswers(peers, mode.toolArgs, mode.options);
      assert.ok(recognised > 0);
      t.diagnostic(`${peers.length} inputs, ${recognised} recognised`);
    });
  }

  // In range and valid or not, out of range, and sizes that would wrap around in 32 bits.
  const symbols = [
    [20, 15, 5],
    [13, 20, 3],
    [33, 90, 8],
    [39, 15, 5],
    [20, 15, -1],
  ];
  for (const [columns, rows, errorCorrectionLevel] of symbols) {
    test(`every sample with a ${columns}x${rows} symbol at level ${errorCorrectionLevel}`, () => {
      const barcode = { columns, rows, errorCorrectionLevel };
      expectSameAnswers(samples, ['--symbol', `${columns},${rows},${errorCorrectionLevel}`], { barcode });
    });
  }

  test('a symbol size beyond 32 bits is out of range, not wrapped', () => {
    const licence = samples.find((s) => s.name.startsWith('aamva-'));
    const barcode = { columns: 2 ** 32 + 20, rows: 15, errorCorrectionLevel: 5 };
    assert.equal(parser.parse(licence.bytes, { barcode }).barcodeValidationStatus, 'symbol out of range');
  });
});
