// Hostile input never breaks the module: every answer is null or a result object, nothing
// throws, and the parser answers a sample afterwards exactly as before. A seeded mutation
// fuzzer runs for ORVANE_JS_FUZZ_SECONDS (default 5) over the samples and peers' inputs.
import assert from 'node:assert/strict';
import { after, before, describe, test } from 'node:test';
import { OrvaneParser } from 'orvane-parser';
import { latin1, readPeerInputs, readSamples, seededRandom } from './support.mjs';

const samples = readSamples();
const licence = samples.find((s) => s.name === 'aamva-2013-arizona').bytes;

let parser;
let reference;
before(async () => {
  parser = await OrvaneParser.load();
  reference = parser.parse(licence);
});
after(() => parser.dispose());

function answer(input, options) {
  const result = parser.parse(input, options);
  if (result === null) return null;
  assert.equal(result.status, 0);
  assert.equal(typeof result.formatName, 'string');
  assert.equal(typeof result.elements, 'object');
  return result;
}

function stillSound() {
  assert.deepEqual(parser.parse(licence), reference, 'the parser answers the licence as before');
}

describe('hostile input', () => {
  test('every sample cut at every length, both ways', () => {
    for (const { bytes } of samples) {
      for (let length = 0; length <= bytes.length; length++) {
        answer(bytes.subarray(0, length));
        answer(bytes.subarray(0, length), { strict: true });
      }
    }
    stillSound();
  });

  const large = [
    ['8192 bytes, the first buffers exactly', () => new Uint8Array(8192).fill(0x41)],
    ['8193 bytes, one past them', () => new Uint8Array(8193).fill(0x41)],
    ['a licence padded to 2 MB', () => {
      const padded = new Uint8Array(2 << 20).fill(0x0a);
      padded.set(licence);
      return padded;
    }],
    ['1 MB of random bytes', () => {
      const random = seededRandom(1);
      return Uint8Array.from({ length: 1 << 20 }, () => (random() * 256) | 0);
    }],
    ['a string of 1 MB beyond Latin-1', () => '\u2603'.repeat(1 << 20)],
    ['lone surrogates', () => `${latin1(licence)}\ud800\udfff\udc00`],
    ['every byte value', () => Uint8Array.from({ length: 256 }, (_, i) => i)],
    ['only record separators', () => '\u001e'.repeat(5000)],
  ];
  for (const [name, make] of large) {
    test(name, () => {
      answer(make());
      answer(make(), { strict: true });
      stillSound();
    });
  }
});

// Edits that scanners, apps and attackers make.
function mutate(random, bytes, other) {
  const pick = (n) => (random() * n) | 0;
  const special = [0x00, 0x0a, 0x0d, 0x1e, 0x1c, 0x25, 0x3b, 0x3c, 0x3d, 0x3f, 0x40, 0x5e, 0x7f, 0x80, 0xc3, 0xff];
  let out = Array.from(bytes);
  const edits = 1 + pick(8);
  for (let e = 0; e < edits; e++) {
    const at = pick(out.length + 1);
    switch (pick(7)) {
      case 0: out[at] = pick(256); break;
      case 1: out.splice(at, 0, special[pick(special.length)]); break;
      case 2: out.splice(at, 1 + pick(16)); break;
      case 3: out.splice(at, 0, ...out.slice(pick(out.length), pick(out.length) + 1 + pick(64))); break;
      case 4: out = out.slice(0, at).concat(Array.from(other.subarray(pick(other.length)))); break;
      case 5: out[at] = special[pick(special.length)]; break;
      default: out.length = Math.min(out.length, at); break;
    }
  }
  return Uint8Array.from(out.slice(0, 1 << 14));
}

test('seeded mutations of the samples and the peers\' inputs', async (t) => {
  const seeds = samples.concat(readPeerInputs()).map((s) => s.bytes).filter((b) => b.length > 0);
  const seconds = Number(process.env.ORVANE_JS_FUZZ_SECONDS || 5);
  const seed = Number(process.env.ORVANE_JS_FUZZ_SEED || 20261125);
  const random = seededRandom(seed);
  // A second parser, made to parse a licence before each input, must agree with the first:
  // nothing of one parse may leak into the next.
  const witness = await OrvaneParser.load();
  const end = Date.now() + seconds * 1000;
  let runs = 0;
  try {
    while (runs < 200 || Date.now() < end) {
      const input = mutate(random, seeds[(random() * seeds.length) | 0], seeds[(random() * seeds.length) | 0]);
      const strict = random() < 0.25;
      let result;
      try {
        result = answer(input, { strict });
      } catch (error) {
        throw new Error(`seed ${seed}, run ${runs}: ${Buffer.from(input).toString('base64')}`, { cause: error });
      }
      if (runs % 16 === 0) {
        witness.parse(licence);
        assert.deepEqual(witness.parse(input, { strict }), result, `seed ${seed}, run ${runs}`);
      }
      runs++;
    }
  } finally {
    witness.dispose();
  }
  stillSound();
  t.diagnostic(`${runs} mutated inputs in ${seconds} s, seed ${seed}`);
});
