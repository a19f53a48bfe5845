// Opens web/index.html from file:// in headless Chromium, driven through the DevTools
// protocol over a pipe (no packages needed), pastes samples, opens a file and checks what
// the page shows against the package's own answers. Then it opens and drops photos of every
// barcode sample (made by python/tests/photo_variants.py into build/web-photos/), hostile
// image files, and shows the fake camera a licence. Screenshots go to build/web-page/.
import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import zlib from 'node:zlib';
import { after, before, describe, test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';

const web = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '..');
const root = path.resolve(web, '..');
const shots = path.join(root, 'build', 'web-page');
const chromium = process.env.CHROMIUM || ['chromium', 'chromium-browser', 'google-chrome'].find(
  (name) => spawnSync('sh', ['-c', `command -v ${name}`]).status === 0);
const built = fs.existsSync(path.join(web, 'lib', 'orvane-parser.js'));
const photos = path.join(root, 'build', 'web-photos');
const python = process.env.PYTHON || (fs.existsSync('/usr/bin/python3') ? '/usr/bin/python3' : 'python3');

// The photos are made once per build folder; without zxing-cpp's Python module the photo tests skip.
function makePhotos() {
  if (fs.existsSync(path.join(photos, 'manifest.json'))) return true;
  const made = spawnSync(python, [path.join(root, 'python', 'tests', 'photo_variants.py'), photos], { stdio: 'inherit' });
  return made.status === 0;
}
const havePhotos = Boolean(chromium) && makePhotos();

// The DevTools protocol over --remote-debugging-pipe: JSON messages ended by a NUL byte.
class DevTools {
  constructor(child) {
    this.child = child;
    this.next = 1;
    this.calls = new Map();
    this.handlers = [];
    let pending = '';
    child.stdio[4].on('data', (chunk) => {
      pending += chunk.toString('utf8');
      let end;
      while ((end = pending.indexOf('\0')) >= 0) {
        const message = JSON.parse(pending.slice(0, end));
        pending = pending.slice(end + 1);
        if (message.id && this.calls.has(message.id)) {
          const { resolve, reject, method } = this.calls.get(message.id);
          this.calls.delete(message.id);
          if (message.error) reject(new Error(`${method}: ${message.error.message}`));
          else resolve(message.result);
        } else if (message.method) {
          for (const handler of this.handlers) handler(message);
        }
      }
    });
  }

  send(method, params = {}, sessionId = undefined) {
    const id = this.next++;
    this.child.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + '\0');
    return new Promise((resolve, reject) => this.calls.set(id, { resolve, reject, method }));
  }

  on(handler) {
    this.handlers.push(handler);
  }
}

let child;
let devtools;
let session;
let profile;
const problems = []; // console errors, exceptions, CSP reports
const requests = [];

const call = (method, params) => devtools.send(method, params, session);

async function evaluate(expression) {
  const reply = await call('Runtime.evaluate', { expression, returnByValue: true, awaitPromise: true });
  if (reply.exceptionDetails) throw new Error(`in the page: ${reply.exceptionDetails.exception?.description || reply.exceptionDetails.text}`);
  return reply.result.value;
}

async function until(expression, what, ms = 10000) {
  const end = Date.now() + ms;
  for (;;) {
    const value = await evaluate(expression);
    if (value) return value;
    if (Date.now() > end) throw new Error(`timed out waiting for ${what}`);
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
}

// What the page shows, read back from its tables.
const readPage = () => evaluate(`(() => {
  const rows = (id) => Object.fromEntries([...document.querySelectorAll('#' + id + ' tbody tr')].map((tr) =>
    [tr.dataset.name, (tr.querySelector('.value') || tr.cells[1]).textContent]));
  const elements = [...document.querySelectorAll('#elements tbody tr')].map((tr) => [tr.cells[0].textContent, tr.cells[1].textContent]);
  return {
    shown: !document.getElementById('result').hidden,
    format: document.getElementById('format').textContent,
    fields: rows('fields'), checks: rows('checks'), elements,
    repairs: [...document.querySelectorAll('#repairs li')].map((li) => li.textContent),
    message: document.getElementById('message').hidden ? '' : document.getElementById('message').textContent,
    text: document.getElementById('input').value,
    images: document.images.length,
  };
})()`);

async function paste(text) {
  await evaluate(`(() => { const t = document.getElementById('input'); t.focus(); t.select(); })()`);
  await call('Input.insertText', { text });
  return readPage();
}

async function screenshot(name) {
  const { data } = await call('Page.captureScreenshot', { format: 'png', captureBeyondViewport: true });
  fs.mkdirSync(shots, { recursive: true });
  fs.writeFileSync(path.join(shots, `${name}.png`), Buffer.from(data, 'base64'));
}

const NOT_FIELDS = new Set(['status', 'formatGroup', 'formatId', 'formatName', 'fieldCount', 'checkDigits', 'checkDigitFailures',
  'mrzCheckDigits', 'mrzCheckDigitFailure', 'age', 'expired', 'repairs', 'elements', 'documentIdValidationStatus',
  'jurisdictionCodeValidationStatus', 'barcodeValidationStatus']);

// Every answer of the package's result is in the page, as the package gave it.
function expectShown(page, result) {
  assert.ok(page.shown, page.message || 'the result is shown');
  assert.equal(page.format, result.formatName);
  const fields = Object.keys(result).filter((name) => !NOT_FIELDS.has(name) && !name.endsWith('ISO'));
  assert.deepEqual(Object.keys(page.fields).sort(), fields.sort());
  for (const name of fields) {
    const value = result[name];
    const expected = name.startsWith('is') && (value === 0 || value === 1) ? (value ? 'yes' : 'no') : String(value);
    assert.ok(page.fields[name].startsWith(expected), `${name}: page shows ${page.fields[name]}, expected ${expected}`);
    if (result[`${name}ISO`]) assert.ok(page.fields[name].includes(result[`${name}ISO`]), `${name} has its ISO date`);
  }
  for (const name of ['documentIdValidationStatus', 'jurisdictionCodeValidationStatus']) {
    if (name in result) assert.equal(page.checks[name], result[name]);
  }
  assert.ok(page.checks.checkDigits.startsWith(result.checkDigits));
  if ('age' in result) assert.equal(page.checks.age, String(result.age));
  assert.deepEqual(page.elements, Object.entries(result.elements));
  if (result.repairs) assert.deepEqual(page.repairs, result.repairs);
}

describe('the web page in headless Chromium', { skip: !chromium && 'no chromium on PATH (Debian: apt-get install chromium)' }, () => {
  let OrvaneParser;
  let parser;
  let samples;

  before(async () => {
    assert.ok(built, 'web/lib/ is missing: run npm run build in js/ first');
    ({ OrvaneParser } = await import(pathToFileURL(path.join(root, 'js', 'dist', 'orvane-parser.mjs')).href));
    parser = await OrvaneParser.load();
    samples = new Map(fs.readdirSync(path.join(root, 'samples')).filter((f) => f.endsWith('.txt'))
      .map((f) => [f.slice(0, -4), fs.readFileSync(path.join(root, 'samples', f))]));

    profile = fs.mkdtempSync(path.join(os.tmpdir(), 'orvane-chromium-'));
    // As root Chromium needs --no-sandbox; the network flags keep it from calling out.
    // The fake camera shows one frame of a licence's barcode, and asks for no permission.
    const camera = havePhotos ? ['--use-fake-device-for-media-stream', '--use-fake-ui-for-media-stream',
      `--use-file-for-fake-video-capture=${path.join(photos, 'camera.y4m')}`] : [];
    child = spawn(chromium, ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
      '--disable-background-networking', '--disable-component-update', '--disable-sync', '--disable-extensions',
      ...camera, '--remote-debugging-pipe', `--user-data-dir=${profile}`, 'about:blank'], { stdio: ['ignore', 'ignore', 'pipe', 'pipe', 'pipe'] });
    let stderr = '';
    child.stderr.on('data', (chunk) => { stderr = (stderr + chunk).slice(-4000); });
    child.on('exit', (code) => { if (code) process.stderr.write(`chromium exited ${code}: ${stderr}\n`); });
    devtools = new DevTools(child);
    const { targetId } = await devtools.send('Target.createTarget', { url: 'about:blank' });
    ({ sessionId: session } = await devtools.send('Target.attachToTarget', { targetId, flatten: true }));
    devtools.on((message) => {
      if (message.sessionId !== session) return;
      if (message.method === 'Runtime.exceptionThrown') problems.push(message.params.exceptionDetails.text);
      if (message.method === 'Runtime.consoleAPICalled' && message.params.type === 'error') problems.push(JSON.stringify(message.params.args));
      if (message.method === 'Log.entryAdded' && message.params.entry.level === 'error') problems.push(message.params.entry.text);
      if (message.method === 'Network.requestWillBeSent') requests.push(message.params.request.url);
    });
    for (const domain of ['Page', 'Runtime', 'Log', 'Network']) await call(`${domain}.enable`);
    await call('Emulation.setDeviceMetricsOverride', { width: 1280, height: 900, deviceScaleFactor: 1, mobile: false });
    const loaded = new Promise((resolve) => devtools.on((m) => m.method === 'Page.loadEventFired' && m.sessionId === session && resolve()));
    await call('Page.navigate', { url: pathToFileURL(path.join(web, 'index.html')).href });
    await loaded;
    await until(`document.documentElement.dataset.ready === 'true'`, 'the parser to load');
  });

  after(async () => {
    parser?.dispose();
    if (child && child.exitCode === null) {
      const exited = once(child, 'exit');
      child.kill();
      await exited;
    }
    if (profile) fs.rmSync(profile, { recursive: true, force: true });
  });

  // Waits until the page has finished with the file called name: its result shown, or a message naming it.
  async function fileDone(name) {
    await until(`(() => {
      const message = document.getElementById('message');
      const said = !message.hidden && message.textContent.includes(${JSON.stringify(name)}) && !message.textContent.startsWith('Reading');
      return said || document.getElementById('input-info').textContent.includes(${JSON.stringify(name)});
    })()`, `the page to read ${name}`, 60000);
    return readPage();
  }

  // Opens a file through the page's file picker.
  async function openFile(file) {
    const { root: documentNode } = await call('DOM.getDocument');
    const { nodeId } = await call('DOM.querySelector', { nodeId: documentNode.nodeId, selector: '#file' });
    await call('DOM.setFileInputFiles', { nodeId, files: [file] });
    return fileDone(path.basename(file));
  }

  for (const name of ['aamva-2013-arizona', 'mrz-passport']) {
    test(`pasting ${name} shows its fields, checks and elements`, async () => {
      const page = await paste(samples.get(name).toString('latin1'));
      // The page reads what the text box holds; its format is the file's.
      const result = parser.parse(page.text);
      assert.equal(result.formatName, parser.parse(samples.get(name)).formatName);
      expectShown(page, result);
      await screenshot(name);
    });
  }

  test('a file opened from disk is read as its bytes, Latin-1 and all', async () => {
    const file = path.join(root, 'samples', 'national-mexico-latin1.txt');
    const page = await openFile(file);
    // The text box shows the text, but the page reads the file's own bytes.
    assert.match(page.text, /[\u00c0-\u00ff]/, 'the text box shows the Latin-1 letters');
    expectShown(page, parser.parse(fs.readFileSync(file)));
    await screenshot('national-mexico-latin1');
  });

  test('a sample picked from the list, strict and lenient', async () => {
    const index = await evaluate(`globalThis.ORVANE_SAMPLES.findIndex((s) => s.name === 'stripe-lines')`);
    await evaluate(`(() => { const s = document.getElementById('sample'); s.value = '${index}'; s.dispatchEvent(new Event('change')); })()`);
    expectShown(await readPage(), parser.parse(samples.get('stripe-lines')));
    await evaluate(`document.getElementById('strict').click()`);
    expectShown(await readPage(), parser.parse(samples.get('stripe-lines'), { strict: true }));
    await evaluate(`document.getElementById('strict').click()`);
  });

  test('Copy JSON copies the result object', async () => {
    const page = await paste(samples.get('aamva-2013-arizona').toString('latin1'));
    await evaluate(`(() => { globalThis.copiedText = null; navigator.clipboard.writeText = async (t) => { globalThis.copiedText = t; }; })()`);
    await evaluate(`document.getElementById('copy').click()`);
    const copied = await until('globalThis.copiedText', 'the copy');
    assert.deepEqual(JSON.parse(copied), parser.parse(page.text));
  });

  test('text that reads as markup stays text, and unreadable text says so', async () => {
    const hostile = samples.get('aamva-2013-arizona').toString('latin1').replace('SAMPLE', '<img src=x onerror=alert(1)>');
    const page = await paste(hostile);
    assert.equal(page.images, 0, 'no element was made from the document');
    assert.ok(page.fields.lastName.startsWith('<IMG SRC=X'));
    const nothing = await paste('not a document');
    assert.equal(nothing.shown, false);
    assert.match(nothing.message, /No format recognised/);
  });

  async function dropFile(name, type, data) {
    await evaluate(`(() => {
      const bytes = Uint8Array.from(atob(${JSON.stringify(Buffer.from(data).toString('base64'))}), (c) => c.charCodeAt(0));
      const transfer = new DataTransfer();
      transfer.items.add(new File([bytes], ${JSON.stringify(name)}, { type: ${JSON.stringify(type)} }));
      document.dispatchEvent(new DragEvent('drop', { dataTransfer: transfer, bubbles: true, cancelable: true }));
    })()`);
    return fileDone(name);
  }

  const photoSkip = !havePhotos && 'no photos: python3 with zxing-cpp, numpy and PIL makes them (scripts/setup)';

  test('photos of every barcode sample show the sample\'s fields, or say no barcode was found', { skip: photoSkip }, async () => {
    const { kinds, images } = JSON.parse(fs.readFileSync(path.join(photos, 'manifest.json'), 'utf8'));
    const read = Object.fromEntries(kinds.map((kind) => [kind, [0, 0]]));
    for (const photo of images) {
      const page = await openFile(path.join(photos, photo.file));
      read[photo.kind][1] += 1;
      if (!page.shown) {
        assert.match(page.message, /No PDF417 or Code 39 barcode was found/, photo.file);
        continue;
      }
      read[photo.kind][0] += 1;
      // What the page shows is what the package reads from the sample's text.
      expectShown(page, parser.parse(samples.get(photo.sample)));
      if (photo.file === 'aamva-2013-arizona.PDF417.background.png') await screenshot('photo-aamva-2013-arizona');
    }
    fs.mkdirSync(shots, { recursive: true });
    fs.writeFileSync(path.join(shots, 'decode-table.json'), `${JSON.stringify({ page: read })}\n`);
    assert.equal(read.clean[0], read.clean[1], 'every clean photo reads');
  });

  test('a dropped photo is read, and a text file after it as text', { skip: photoSkip }, async () => {
    const page = await dropFile('licence.png', 'image/png', fs.readFileSync(path.join(photos, 'aamva-2013-arizona.PDF417.clean.png')));
    expectShown(page, parser.parse(samples.get('aamva-2013-arizona')));
    assert.deepEqual(await evaluate(`[...document.querySelectorAll('#barcodes button')].map((b) => b.dataset.symbology)`), ['PDF417']);
    const text = await dropFile('passport.txt', 'text/plain', samples.get('mrz-passport'));
    expectShown(text, parser.parse(samples.get('mrz-passport')));
    assert.equal(await evaluate(`document.getElementById('photo').hidden`), true, 'the photo is put away');
  });

  test('hostile image files say so, and the page reads the next photo', { skip: photoSkip }, async () => {
    const chunk = (kind, body) => {
      const length = Buffer.alloc(4);
      length.writeUInt32BE(body.length);
      const crc = Buffer.alloc(4);
      crc.writeUInt32BE(zlib.crc32(Buffer.concat([Buffer.from(kind), body])));
      return Buffer.concat([length, Buffer.from(kind), body, crc]);
    };
    const header = Buffer.alloc(13);
    header.writeUInt32BE(20000, 0);
    header.writeUInt32BE(20000, 4);
    header[8] = 8;
    const huge = Buffer.concat([Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]), chunk('IHDR', header),
      chunk('IDAT', zlib.deflateSync(Buffer.alloc(1))), chunk('IEND', Buffer.alloc(0))]);
    const jpeg = fs.readFileSync(path.join(photos, 'aamva-2013-arizona.PDF417.jpeg.jpg'));
    const hostile = [
      ['garbage.png', 'image/png', Buffer.from('not a picture at all')],
      ['huge.png', 'image/png', huge],
      ['cut.jpg', 'image/jpeg', jpeg.subarray(0, 600)],
      ['empty.jpg', 'image/jpeg', Buffer.alloc(0)],
    ];
    for (const [name, type, data] of hostile) {
      const page = await dropFile(name, type, data);
      assert.equal(page.shown, false, name);
      assert.match(page.message, /^(Cannot read|No PDF417)/, `${name}: ${page.message}`);
    }
    expectShown(await dropFile('again.jpg', 'image/jpeg', jpeg), parser.parse(samples.get('aamva-2013-arizona')));
  });

  test('the camera finds the licence it is shown and stops', { skip: photoSkip }, async () => {
    await evaluate(`document.getElementById('camera').click()`);
    await until(`document.getElementById('input-info').textContent.includes('camera')`, 'the camera to read the licence', 30000);
    expectShown(await readPage(), parser.parse(samples.get('aamva-2013-arizona')));
    assert.equal(await evaluate(`document.getElementById('camera-view').hidden`), true, 'the camera is stopped');
    await screenshot('camera-aamva-2013-arizona');
  });

  test('nothing went wrong in the page and nothing left this machine', () => {
    assert.deepEqual(problems, []);
    const outside = requests.filter((url) => !url.startsWith('file:') && !url.startsWith('data:') && !url.startsWith('blob:'));
    assert.deepEqual(outside, []);
  });
});
