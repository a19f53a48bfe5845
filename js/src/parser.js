// The JavaScript face of the library. The build wraps this file, Emscripten's loader and
// the WebAssembly code (as base64) into one file for ES modules and one for CommonJS and
// script tags; defineOrvaneParser receives the loader and the code.
function defineOrvaneParser(createOrvaneModule, wasmBase64) {
  'use strict';

  const OK = 0;
  const OUT_OF_MEMORY = -24;
  const NO_ANSWER = -26;
  const CHECK_WORDS = ['not checkable', 'not checkable', 'valid', 'invalid'];
  const LARGEST_INPUT = 0x7fffffff; // the C interface takes an int length
  const FIRST_INPUT_ROOM = 8192;
  const FIRST_RESULT_ROOM = 65536;
  const CONSTRUCTING = Symbol('constructing');

  const utf8 = new TextEncoder();
  const ascii = new TextDecoder(); // the library escapes every byte outside ASCII in its JSON

  let compiledCode = null; // compiled once, instantiated for each parser

  function decodeBase64(text) {
    if (typeof Buffer === 'function' && typeof Buffer.from === 'function') {
      const bytes = Buffer.from(text, 'base64');
      return new Uint8Array(bytes.buffer, bytes.byteOffset, bytes.byteLength);
    }
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < binary.length; i++) bytes[i] = binary.charCodeAt(i);
    return bytes;
  }

  function compile() {
    if (compiledCode === null) {
      compiledCode = WebAssembly.compile(decodeBase64(wasmBase64));
      // A failed compile (say, a browser without SIMD) is not kept, so a later load retries.
      compiledCode.catch(() => {
        compiledCode = null;
      });
    }
    return compiledCode;
  }

  // Every parse asks the local time, and Emscripten answers it with three Date objects:
  // a few microseconds, a twentieth of a short parse. The answer changes once a second,
  // so it is kept for the second it was asked in. A loader without that import is left as
  // it is.
  const TM_WORDS = 10; // tm_sec .. tm_gmtoff, what the import writes
  function keepLocalTime(imports) {
    let memory = null;
    let words = null;
    for (const table of Object.values(imports)) {
      for (const [name, ask] of Object.entries(table)) {
        if (typeof ask !== 'function' || ask.name !== '__localtime_js' || ask.length !== 2) continue;
        let second = NaN;
        const kept = new Int32Array(TM_WORDS);
        table[name] = (timeAt, tmAt) => {
          if (!memory) return ask(timeAt, tmAt);
          if (words === null || words.buffer !== memory.buffer) words = new Int32Array(memory.buffer);
          const now = words[timeAt >> 2];
          if (now !== second) {
            ask(timeAt, tmAt);
            if (words.buffer !== memory.buffer) words = new Int32Array(memory.buffer);
            kept.set(words.subarray(tmAt >> 2, (tmAt >> 2) + TM_WORDS));
            second = now;
            return;
          }
          words.set(kept, tmAt >> 2);
        };
      }
    }
    return (instance) => {
      memory = Object.values(instance.exports).find((value) => value instanceof WebAssembly.Memory);
    };
  }

  async function instantiate() {
    const code = await compile();
    return new Promise((resolve, reject) => {
      createOrvaneModule({
        instantiateWasm(imports, receive) {
          const attach = keepLocalTime(imports);
          WebAssembly.instantiate(code, imports).then((instance) => {
            attach(instance);
            receive(instance, code);
          }, reject);
          return {};
        },
      }).then(resolve, reject);
    });
  }

  function describe(value) {
    if (value === null) return 'null';
    if (typeof value !== 'object') return typeof value;
    const name = value.constructor && value.constructor.name;
    return name ? 'a ' + name : 'an object';
  }

  function isArrayBuffer(value) {
    const tag = Object.prototype.toString.call(value);
    return tag === '[object ArrayBuffer]' || tag === '[object SharedArrayBuffer]';
  }

  // Symbol sizes beyond int32 would wrap on the way into WebAssembly; -1 is out of range too.
  function symbolDimension(barcode, name) {
    const value = barcode[name];
    if (typeof value !== 'number' || !Number.isInteger(value)) {
      throw new TypeError(`orvane-parser: barcode.${name} must be an integer, not ${describe(value)}`);
    }
    return value === (value | 0) ? value : -1;
  }

  class OrvaneParser {
    #module;
    #handle;
    #scratch; // the result's length and the symbol check's verdict
    #input = 0;
    #inputRoom = 0;
    #result = 0;
    #resultRoom = 0;
    #version;
    #failure = null;

    /** Compiles the WebAssembly code on first use and gives a parser with its own memory and handle. */
    static async load() {
      return new OrvaneParser(await instantiate(), CONSTRUCTING);
    }

    constructor(module, token) {
      if (token !== CONSTRUCTING) throw new TypeError('orvane-parser: create a parser with await OrvaneParser.load()');
      this.#module = module;
      this.#handle = module._SVT_create();
      this.#scratch = module._malloc(64);
      if (this.#handle === 0 || this.#scratch === 0) throw new Error('orvane-parser: out of memory creating a parser');
      this.#reserveInput(FIRST_INPUT_ROOM);
      this.#reserveResult(FIRST_RESULT_ROOM);
      module._SVT_getVersionText(this.#scratch, 64);
      let text = '';
      for (let at = this.#scratch, heap = module.HEAPU8; heap[at] !== 0; at++) text += String.fromCharCode(heap[at]);
      this.#version = text.replace(/^v\.?/, '');
    }

    /** The library's version, "1.26.0". */
    get version() {
      return this.#version;
    }

    /**
     * Parses one scanned input. A string is read as Latin-1 when every character fits,
     * else as UTF-8. Gives the result object, or null when no format recognised the input.
     */
    parse(input, options) {
      const module = this.#usable();
      let strict = false;
      let barcode = null;
      if (options !== undefined && options !== null) {
        if (typeof options !== 'object') throw new TypeError(`orvane-parser: parse options must be an object, not ${describe(options)}`);
        strict = Boolean(options.strict);
        if (options.barcode !== undefined && options.barcode !== null) barcode = options.barcode;
      }
      let columns = 0;
      let rows = 0;
      let level = 0;
      if (barcode !== null) {
        if (typeof barcode !== 'object') throw new TypeError(`orvane-parser: barcode must be { columns, rows, errorCorrectionLevel }, not ${describe(barcode)}`);
        columns = symbolDimension(barcode, 'columns');
        rows = symbolDimension(barcode, 'rows');
        level = symbolDimension(barcode, 'errorCorrectionLevel');
      }
      const length = this.#write(input);
      if (length === 0) return null;
      let status;
      let result = null;
      try {
        status = strict
          ? module._SVT_parse(this.#handle, this.#input, length)
          : module._SVT_parseLenient(this.#handle, this.#input, length);
        if (status === OK) {
          result = this.#readResult();
          if (barcode !== null) result.barcodeValidationStatus = this.#checkSymbol(columns, rows, level);
        }
      } catch (error) {
        // A trap leaves the module's memory in an unknown state: this parser is done.
        this.#failure = error;
        throw new Error('orvane-parser: the parser failed on this input; load a new one', { cause: error });
      }
      if (status === OUT_OF_MEMORY) throw new RangeError(`orvane-parser: out of memory for an input of ${length} bytes`);
      return result;
    }

    /** Frees the handle and the parser's memory; a disposed parser refuses to parse. Calling it twice is harmless. */
    dispose() {
      const module = this.#module;
      if (module === null) return;
      this.#module = null;
      if (this.#failure !== null) return;
      module._SVT_delete(this.#handle);
      module._free(this.#input);
      module._free(this.#result);
      module._free(this.#scratch);
    }

    #usable() {
      if (this.#module === null) throw new Error('orvane-parser: this parser was disposed');
      if (this.#failure !== null) {
        throw new Error('orvane-parser: this parser failed on an earlier input; load a new one', { cause: this.#failure });
      }
      return this.#module;
    }

    // Copies the input into the module's memory and gives its length in bytes.
    #write(input) {
      if (typeof input === 'string') return this.#writeText(input);
      let bytes;
      if (ArrayBuffer.isView(input)) bytes = new Uint8Array(input.buffer, input.byteOffset, input.byteLength);
      else if (isArrayBuffer(input)) bytes = new Uint8Array(input);
      else throw new TypeError(`orvane-parser: parse() takes a string or a Uint8Array, not ${describe(input)}`);
      this.#reserveInput(bytes.length);
      this.#module.HEAPU8.set(bytes, this.#input);
      return bytes.length;
    }

    #writeText(text) {
      const length = text.length;
      this.#reserveInput(length);
      const heap = this.#module.HEAPU8;
      const at = this.#input;
      for (let i = 0; i < length; i++) {
        const code = text.charCodeAt(i);
        if (code > 0xff) return this.#writeUtf8(text);
        heap[at + i] = code;
      }
      return length;
    }

    #writeUtf8(text) {
      const most = Math.min(text.length * 3, LARGEST_INPUT);
      this.#reserveInput(most);
      const room = this.#module.HEAPU8.subarray(this.#input, this.#input + most);
      const { read, written } = utf8.encodeInto(text, room);
      if (read < text.length) throw new RangeError(`orvane-parser: input longer than ${LARGEST_INPUT} bytes`);
      return written;
    }

    #reserveInput(length) {
      if (length <= this.#inputRoom) return;
      if (length > LARGEST_INPUT) throw new RangeError(`orvane-parser: input longer than ${LARGEST_INPUT} bytes`);
      const module = this.#module;
      module._free(this.#input);
      this.#inputRoom = 0;
      this.#input = module._malloc(length);
      if (this.#input === 0) throw new RangeError(`orvane-parser: out of memory for an input of ${length} bytes`);
      this.#inputRoom = length;
    }

    #reserveResult(length) {
      const module = this.#module;
      module._free(this.#result);
      this.#resultRoom = 0;
      this.#result = module._malloc(length);
      if (this.#result === 0) throw new RangeError(`orvane-parser: out of memory for a result of ${length} bytes`);
      this.#resultRoom = length;
    }

    #readResult() {
      const module = this.#module;
      const lengthAt = this.#scratch >> 2;
      let status = module._SVT_getResultJson(this.#handle, this.#result, this.#resultRoom, this.#scratch);
      let length = module.HEAP32[lengthAt];
      if (status === NO_ANSWER && length >= this.#resultRoom) {
        this.#reserveResult(length + 1);
        status = module._SVT_getResultJson(this.#handle, this.#result, this.#resultRoom, this.#scratch);
        length = module.HEAP32[lengthAt];
      }
      if (status !== OK) throw new Error(`orvane-parser: the library gave no result object (status ${status})`);
      return JSON.parse(ascii.decode(module.HEAPU8.subarray(this.#result, this.#result + length)));
    }

    // The tool's words for the symbol check, so that both give the same member.
    #checkSymbol(columns, rows, level) {
      const module = this.#module;
      const status = module._SVT_validateBarcode(this.#handle, columns, rows, level, this.#scratch);
      if (status !== OK) return 'symbol out of range';
      return CHECK_WORDS[module.HEAP32[this.#scratch >> 2]] || 'not checkable';
    }
  }

  if (typeof Symbol.dispose === 'symbol') OrvaneParser.prototype[Symbol.dispose] = OrvaneParser.prototype.dispose;

  return OrvaneParser;
}
