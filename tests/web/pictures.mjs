// Pictures against pictures.

// In the page: the means of what differs between a picture at an address and a canvas, or what
// window keeps by that name, in steps of 255.
export function differenceFrom(still, canvas) {
  return new Promise((resolve, reject) => {
    const image = new Image();
    image.onerror = () => reject(new Error('no picture'));
    image.onload = () => {
      const [width, height] = [image.width, image.height];
      const pixels = (source) => {
        const copy = Object.assign(document.createElement('canvas'), { width, height });
        const context = copy.getContext('2d');
        context.drawImage(source, 0, 0);
        return context.getImageData(0, 0, width, height).data;
      };
      const [drawn, wanted] = [pixels(window[canvas] ?? document.querySelector(canvas)), pixels(image)];
      let sum = 0;
      let far = 0;
      for (let k = 0; k < drawn.length; k += 4) {
        const off = [0, 1, 2].map((c) => Math.abs(drawn[k + c] - wanted[k + c]));
        sum += off[0] + off[1] + off[2];
        if (Math.max(...off) > 16) far++;
      }
      const count = drawn.length / 4;
      resolve({ mean: sum / (3 * count), far: far / count, size: [width, height] });
    };
    image.src = still;
  });
}

// In the page, ahead of its scripts, or in a worker: one sample a pixel, as in the native pictures,
// for where several of them lie is each renderer's own business.
export function withoutAntialiasing() {
  const Canvas = globalThis.HTMLCanvasElement ?? globalThis.OffscreenCanvas;
  const real = Canvas.prototype.getContext;
  Canvas.prototype.getContext = function (kind, attributes) {
    return real.call(this, kind, attributes && { ...attributes, antialias: false });
  };
}
