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

  const $ = (id) => document.getElementById(id);
  const input = $('input');
  const strict = $('strict');
  let parser = null;
  let bytes = null; // the dropped or opened file, read as it is until the text is edited
  let bytesName = '';
  let shown = null;

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
    message(result ? '' : 'No format recognised this text.');
    show(result);
  }

  async function openFile(file) {
    if (/^image\//.test(file.type)) {
      message('This page reads the text a scanner wrote, not a picture of the barcode.');
      return;
    }
    bytes = new Uint8Array(await file.arrayBuffer());
    bytesName = file.name;
    let text = '';
    for (let i = 0; i < bytes.length; i += 8192) text += String.fromCharCode.apply(null, bytes.subarray(i, i + 8192));
    input.value = text;
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
      bytes = null;
      input.value = sample.text;
      update();
    });
  }

  function wire() {
    input.addEventListener('input', () => {
      bytes = null;
      $('sample').value = '';
      update();
    });
    strict.addEventListener('change', update);
    $('file').addEventListener('change', (event) => {
      if (event.target.files[0]) openFile(event.target.files[0]);
      event.target.value = '';
    });
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
    document.documentElement.dataset.ready = 'true';
    update();
  }

  start();
})();
