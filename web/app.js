// The page: reads what is pasted, dropped or picked with the WebAssembly parser and shows
// the result. Runs from file:// as well as from a server, so it is a plain script.
(function () {
  'use strict';

  // Members shown in their own place rather than in the fields table.
  const NOT_FIELDS = new Set(['status', 'formatGroup', 'formatId', 'formatName', 'fieldCount', 'checkDigits',
    'checkDigitFailures', 'mrzCheckDigits', 'mrzCheckDigitFailure', 'age', 'expired', 'repairs', 'elements',
    'documentIdValidationStatus', 'jurisdictionCodeValidationStatus', 'barcodeValidationStatus']);

  const LABELS = {
    firstName: 'First name', middleName: 'Middle name', lastName: 'Last name', nameSuffix: 'Name suffix',
    namePrefix: 'Name prefix', fullName: 'Full name', documentType: 'Document type', countryCode: 'Country code',
    country: 'Country', jurisdictionCode: 'Jurisdiction', iin: 'Issuer number (IIN)', issuedBy: 'Issued by (IIN)',
    address1: 'Address', address2: 'Address, second line', city: 'City', postalCode: 'Postal code',
    licenseNumber: 'Document number', classificationCode: 'Classification', vehicleClassCode: 'Vehicle class',
    vehicleClassCodeDescription: 'Vehicle class, described', restrictionCode: 'Restrictions',
    restrictionCodeDescription: 'Restrictions, described', endorsementsCode: 'Endorsements',
    endorsementCodeDescription: 'Endorsements, described', complianceType: 'Compliance type',
    aamvaVersion: 'AAMVA version', gender: 'Sex', eyeColor: 'Eyes', hairColor: 'Hair', race: 'Race',
    height: 'Height', weightKG: 'Weight (kg)', weightLBS: 'Weight (lb)', birthdate: 'Date of birth',
    expirationDate: 'Expires', issueDate: 'Issued', cardRevisionDate: 'Card design revised',
    HAZMATExpDate: 'Hazardous materials endorsement expires', isLimitedDurationDocument: 'Limited duration',
    isOrganDonor: 'Organ donor', isVeteran: 'Veteran',
  };
  const FAMILIES = ['AAMVA barcode', 'Magnetic stripe', 'HC card', 'Military ID card', 'National document',
    'Machine-readable zone'];

  // Photos: the limit of every face, and the size a larger photo is scaled to before reading.
  const MAX_PIXELS = 100000000;
  const MAX_READ_PIXELS = 16000000;
  const SYMBOLOGY_NAMES = { PDF417: 'PDF417', Code39: 'Code 39' };

  const $ = (id) => document.getElementById(id);
  const input = $('input');
  const strict = $('strict');
  let parser = null;
  let bytes = null; // the dropped or opened file, read as it is until the text is edited
  let bytesName = '';
  let shown = null;
  let reader = null; // zxing-wasm, made ready on the first photo
  let barcodes = []; // the barcodes of the photo shown: { symbology, bytes }
  let barcodeShown = -1;
  let photoName = '';
  let camera = null; // { stream, timer, busy } while the camera scans

  function labelOf(name) {
    return LABELS[name] || name.replace(/([a-z])([A-Z])/g, '$1 $2').replace(/^./, (c) => c.toUpperCase());
  }

  function element(tag, text, className) {
    const node = document.createElement(tag);
    if (text !== undefined) node.textContent = text;
    if (className) node.className = className;
    return node;
  }

  function row(table, cells, name) {
    const tr = element('tr');
    if (name) tr.dataset.name = name;
    cells.forEach((cell, i) => {
      const td = element('td');
      if (cell instanceof Node) td.append(cell);
      else td.textContent = cell;
      if (i === 0) td.className = 'key';
      tr.append(td);
    });
    table.tBodies[0].append(tr);
  }

  function badge(word) {
    return element('span', word, 'badge ' + word.replace(/\s+/g, '-'));
  }

  function fieldCell(name, value) {
    const span = element('span');
    span.append(element('span', value, 'value'));
    span.append(element('code', name, 'name'));
    return span;
  }

  function message(text) {
    $('message').textContent = text;
    $('message').hidden = !text;
  }

  function clear(table) {
    table.tBodies[0].replaceChildren();
  }

  function show(result) {
    shown = result;
    $('copied').textContent = '';
    for (const id of ['fields', 'checks', 'elements']) clear($(id));
    $('repairs').replaceChildren();
    if (result === null) {
      $('result').hidden = true;
      return;
    }
    $('result').hidden = false;
    $('format').textContent = result.formatName || 'Recognised';
    $('format-detail').textContent = `${FAMILIES[result.formatGroup] || 'Format family ' + result.formatGroup}, format ${result.formatId}; ${result.fieldCount} fields read`;

    for (const [name, value] of Object.entries(result)) {
      if (NOT_FIELDS.has(name) || name.endsWith('ISO')) continue;
      let text = String(value);
      if (name.startsWith('is') && (value === 0 || value === 1)) text = value ? 'yes' : 'no';
      if (typeof result[name + 'ISO'] === 'string') text += `  (${result[name + 'ISO']})`;
      row($('fields'), [labelOf(name), fieldCell(name, text)], name);
    }

    const checks = $('checks');
    const verdicts = [
      ['documentIdValidationStatus', 'Document number shape'],
      ['jurisdictionCodeValidationStatus', 'Jurisdiction matches issuer number'],
      ['barcodeValidationStatus', 'Barcode symbol size'],
    ];
    for (const [name, label] of verdicts) if (name in result) row(checks, [label, badge(result[name])], name);
    const digits = result.checkDigits === 'none' ? 'none on this document' : result.checkDigits;
    row(checks, ['Check digits', badge(digits)], 'checkDigits');
    if (result.checkDigitFailures) row(checks, ['Failing check digits', result.checkDigitFailures.join(', ')], 'checkDigitFailures');
    if ('age' in result) row(checks, ['Age today', String(result.age)], 'age');
    if ('expired' in result) row(checks, ['Expired', badge(result.expired ? 'expired' : 'in force')], 'expired');

    const repairs = $('repairs');
    if (result.repairs) for (const repair of result.repairs) repairs.append(element('li', repair));
    else repairs.append(element('li', strict.checked ? 'none (strict parse)' : 'none needed', 'muted'));

    for (const [id, value] of Object.entries(result.elements)) row($('elements'), [id, value], id);
    $('json').textContent = JSON.stringify(result, null, 2);
  }

  function describeInput() {
    if (bytes) return `${bytes.length} bytes from ${bytesName}`;
    return input.value ? `${input.value.length} characters` : '';
  }

  function update() {
    if (!parser) return;
    $('input-info').textContent = describeInput();
    const source = bytes || input.value;
    if (source.length === 0) {
      message('');
      show(null);
      return;
    }
    let result;
    try {
      result = parser.parse(source, { strict: strict.checked });
    } catch (error) {
      message(String(error && error.message));
      show(null);
      return;
    }
    message(result ? '' : barcodeShown >= 0 ? 'No format recognised the text of this barcode.' : 'No format recognised this text.');
    show(result);
    listBarcodes();
  }

  // Photos: decoded by the browser, read by zxing-wasm, each barcode's bytes parsed.

  function latin1(data) {
    let text = '';
    for (let i = 0; i < data.length; i += 8192) text += String.fromCharCode.apply(null, data.subarray(i, i + 8192));
    return text;
  }

  function barcodeReader() {
    if (typeof globalThis.ZXingWASM !== 'object' || typeof globalThis.ORVANE_ZXING_WASM !== 'string') {
      return Promise.reject(new Error('the barcode reader is not built yet: run "npm run build" in js/ (see the README), then reload'));
    }
    if (!reader) {
      // The WebAssembly comes from the script itself: a page opened from file:// may fetch nothing.
      const binary = Uint8Array.from(atob(globalThis.ORVANE_ZXING_WASM), (c) => c.charCodeAt(0));
      reader = globalThis.ZXingWASM.prepareZXingModule({ overrides: { wasmBinary: binary.buffer }, fireImmediately: true })
        .then(() => globalThis.ZXingWASM);
      reader.catch(() => { reader = null; });
    }
    return reader;
  }

  function sameBytes(a, b) {
    return a.length === b.length && a.every((byte, i) => byte === b[i]);
  }

  // Every PDF417 and Code 39 symbol in the pixels, PDF417 first (a military ID card's back
  // has both, and the PDF417 symbol holds more), each once.
  async function readBarcodes(pixels) {
    const zxing = await barcodeReader();
    const found = [];
    // The local binarizer reads most photos; a fixed threshold reads the dim, blurred and
    // tilted ones it misses, so the others are tried only when it finds nothing.
    for (const binarizer of ['LocalAverage', 'FixedThreshold', 'GlobalHistogram']) {
      const results = await zxing.readBarcodes(pixels, {
        formats: ['PDF417', 'Code39'], binarizer, tryHarder: true, tryRotate: true, tryDownscale: true, maxNumberOfSymbols: 8,
      });
      for (const result of results) {
        if (!result.isValid || !result.bytes || result.bytes.length === 0) continue;
        const barcode = { symbology: result.format === 'PDF417' ? 'PDF417' : 'Code39', bytes: new Uint8Array(result.bytes) };
        if (!found.some((other) => other.symbology === barcode.symbology && sameBytes(other.bytes, barcode.bytes))) found.push(barcode);
      }
      if (found.length > 0) break;
    }
    return found.sort((a, b) => (a.symbology !== 'PDF417') - (b.symbology !== 'PDF417'));
  }

  // The photo's pixels, drawn on the preview; its size is known before it is decoded, so
  // that a file claiming a huge image is refused before it takes the memory.
  async function photoPixels(file) {
    const url = URL.createObjectURL(file);
    try {
      const image = new Image();
      const loaded = new Promise((resolve, reject) => {
        image.onload = resolve;
        image.onerror = () => reject(new Error('this is not an image the browser can read'));
      });
      image.src = url;
      await loaded;
      const width = image.naturalWidth;
      const height = image.naturalHeight;
      if (!width || !height) throw new Error('this is not an image the browser can read');
      if (width * height > MAX_PIXELS) throw new Error(`the photo is too large: ${width}x${height} pixels, at most 100 megapixels`);
      const scale = Math.min(1, Math.sqrt(MAX_READ_PIXELS / (width * height)));
      return draw(image, Math.max(1, Math.round(width * scale)), Math.max(1, Math.round(height * scale)));
    } finally {
      URL.revokeObjectURL(url);
    }
  }

  function draw(source, width, height) {
    const canvas = $('photo-view');
    canvas.width = width;
    canvas.height = height;
    const context = canvas.getContext('2d', { willReadFrequently: true });
    context.drawImage(source, 0, 0, width, height);
    return context.getImageData(0, 0, width, height);
  }

  function showPhoto(visible) {
    $('photo').hidden = !visible;
    $('photo-view').hidden = !visible;
    if (!visible) {
      barcodes = [];
      barcodeShown = -1;
      $('barcodes').replaceChildren();
    }
  }

  function showBarcode(index) {
    const barcode = barcodes[index];
    barcodeShown = index;
    bytes = barcode.bytes;
    bytesName = `the ${SYMBOLOGY_NAMES[barcode.symbology]} barcode of ${photoName}`;
    input.value = latin1(bytes);
    $('sample').value = '';
    update();
  }

  function listBarcodes() {
    const list = $('barcodes');
    list.replaceChildren();
    if ($('photo').hidden || !camera && barcodes.length === 0) return;
    barcodes.forEach((barcode, index) => {
      const result = parser.parse(barcode.bytes, { strict: strict.checked });
      const button = element('button', `${SYMBOLOGY_NAMES[barcode.symbology]}: ${result ? result.formatName : 'not recognised'}`);
      button.type = 'button';
      button.dataset.symbology = barcode.symbology;
      button.setAttribute('aria-pressed', String(index === barcodeShown));
      button.addEventListener('click', () => showBarcode(index));
      const item = element('li');
      item.append(button);
      list.append(item);
    });
    const count = barcodes.length === 1 ? 'One barcode' : `${barcodes.length} barcodes`;
    list.prepend(element('li', `${count} in ${photoName}`, 'muted'));
  }

  function showFound(found, name) {
    photoName = name;
    barcodes = found;
    barcodeShown = -1;
    if (found.length === 0) {
      bytes = null;
      input.value = '';
      show(null);
      $('input-info').textContent = '';
      message(`No PDF417 or Code 39 barcode was found in ${name}. Lay the card flat in good light, ` +
        'with the barcode filling most of the picture.');
      listBarcodes();
      return;
    }
    const first = found.findIndex((barcode) => parser.parse(barcode.bytes, { strict: strict.checked }));
    showBarcode(Math.max(0, first));
  }

  async function openPhoto(file) {
    stopCamera();
    message(`Reading the barcodes in ${file.name}…`);
    try {
      const pixels = await photoPixels(file);
      showPhoto(true);
      showFound(await readBarcodes(pixels), file.name);
    } catch (error) {
      showPhoto(false);
      show(null);
      message(`Cannot read ${file.name}: ${String(error && error.message || error)}.`);
    }
  }

  async function scanFrame() {
    const video = $('camera-view');
    if (!camera || camera.busy || video.readyState < 2 || !video.videoWidth) return;
    camera.busy = true;
    try {
      const found = await readBarcodes(draw(video, video.videoWidth, video.videoHeight));
      if (camera && found.some((barcode) => parser.parse(barcode.bytes))) {
        stopCamera();
        showPhoto(true);
        showFound(found, 'the camera\'s picture');
      }
    } catch (error) {
      stopCamera();
      message(`The camera's picture cannot be read: ${String(error && error.message || error)}.`);
    } finally {
      if (camera) camera.busy = false;
    }
  }

  async function startCamera() {
    let stream;
    try {
      await barcodeReader();
      stream = await navigator.mediaDevices.getUserMedia({
        video: { facingMode: 'environment', width: { ideal: 1920 }, height: { ideal: 1080 } }, audio: false,
      });
    } catch (error) {
      message(`The camera cannot be used: ${String(error && error.message || error)}.`);
      return;
    }
    const video = $('camera-view');
    video.srcObject = stream;
    showPhoto(true);
    $('photo-view').hidden = true;
    video.hidden = false;
    camera = { stream, busy: false, timer: setInterval(scanFrame, 250) };
    $('camera').textContent = 'Stop the camera';
    message('Hold the barcode on the back of the card in front of the camera.');
    await video.play().catch(() => {});
  }

  function stopCamera() {
    if (!camera) return;
    clearInterval(camera.timer);
    for (const track of camera.stream.getTracks()) track.stop();
    camera = null;
    const video = $('camera-view');
    video.srcObject = null;
    video.hidden = true;
    $('camera').textContent = 'Scan with the camera';
    message('');
  }

  // The file's first bytes decide, as a photo may come without a type.
  async function isPhoto(file) {
    if (/^image\//.test(file.type)) return true;
    const head = new Uint8Array(await file.slice(0, 12).arrayBuffer());
    const starts = (...values) => values.every((value, i) => head[i] === value);
    return starts(0x89, 0x50, 0x4e, 0x47) || starts(0xff, 0xd8, 0xff) || starts(0x47, 0x49, 0x46, 0x38) ||
      starts(0x42, 0x4d) || (starts(0x52, 0x49, 0x46, 0x46) && latin1(head.subarray(8, 12)) === 'WEBP');
  }

  async function openFile(file) {
    if (await isPhoto(file)) {
      await openPhoto(file);
      return;
    }
    stopCamera();
    showPhoto(false);
    bytes = new Uint8Array(await file.arrayBuffer());
    bytesName = file.name;
    input.value = latin1(bytes);
    $('sample').value = '';
    update();
  }

  async function copyJson() {
    if (!shown) return;
    const text = JSON.stringify(shown, null, 2);
    try {
      await navigator.clipboard.writeText(text);
    } catch {
      // Pages without the clipboard API (or its permission) copy through a selection.
      const scratch = element('textarea');
      scratch.value = text;
      document.body.append(scratch);
      scratch.select();
      document.execCommand('copy');
      scratch.remove();
    }
    $('copied').textContent = 'Copied';
  }

  function fillSamples() {
    const select = $('sample');
    const groups = new Map();
    for (const [index, sample] of (globalThis.ORVANE_SAMPLES || []).entries()) {
      const family = sample.name.split('-')[0];
      if (!groups.has(family)) groups.set(family, select.appendChild(element('optgroup')));
      groups.get(family).label = family.toUpperCase();
      const option = element('option', sample.about || sample.name);
      option.value = String(index);
      groups.get(family).append(option);
    }
    select.addEventListener('change', () => {
      const sample = globalThis.ORVANE_SAMPLES[Number(select.value)];
      if (!sample) return;
      stopCamera();
      showPhoto(false);
      bytes = null;
      input.value = sample.text;
      update();
    });
  }

  function wire() {
    input.addEventListener('input', () => {
      stopCamera();
      showPhoto(false);
      bytes = null;
      $('sample').value = '';
      update();
    });
    strict.addEventListener('change', update);
    for (const id of ['file', 'take-photo']) {
      $(id).addEventListener('change', (event) => {
        if (event.target.files[0]) openFile(event.target.files[0]);
        event.target.value = '';
      });
    }
    $('camera').addEventListener('click', () => (camera ? stopCamera() : startCamera()));
    $('copy').addEventListener('click', copyJson);
    document.addEventListener('dragover', (event) => {
      event.preventDefault();
      document.body.classList.add('dropping');
    });
    document.addEventListener('dragleave', () => document.body.classList.remove('dropping'));
    document.addEventListener('drop', (event) => {
      event.preventDefault();
      document.body.classList.remove('dropping');
      const file = event.dataTransfer && event.dataTransfer.files[0];
      if (file) openFile(file);
    });
  }

  async function start() {
    fillSamples();
    wire();
    if (typeof globalThis.OrvaneParser !== 'function') {
      message('The parser is not built yet: run "npm run build" in js/ (see the README), then reload.');
      return;
    }
    try {
      parser = await globalThis.OrvaneParser.load();
    } catch (error) {
      message('This browser cannot run the parser: ' + String(error && error.message));
      return;
    }
    $('version').textContent = `orvane-parser ${parser.version}, running in this page`;
    // The camera needs a secure page (https, localhost or a file) and a browser that offers it.
    $('camera').hidden = !(navigator.mediaDevices && navigator.mediaDevices.getUserMedia) ||
      typeof globalThis.ZXingWASM !== 'object';
    document.documentElement.dataset.ready = 'true';
    update();
  }

  start();
})();
