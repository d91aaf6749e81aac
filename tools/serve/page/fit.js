// How large a keyboard is shown, so that its pixels fall on those of the screen.

/** Pixels a point that the server draws, from small to large. */
let scales = [1, 2];

export const setScales = (list) => {
  scales = list.map(Number).sort((one, other) => one - other);
};

const kMostZoom = 2;

/**
 * For a keyboard of `width` by `height` points and room in CSS pixels: the scale to ask for and how
 * many CSS pixels a point then takes. Where it can be, each pixel drawn is one of the screen's.
 */
export function fit({ width, height }, room) {
  const ratio = window.devicePixelRatio || 1;
  const largest = Math.min(room.width / width, room.height / height, kMostZoom);
  const sharp = scales.filter((scale) => scale / ratio <= largest).at(-1);
  if (sharp) return { scale: sharp, zoom: sharp / ratio };
  const enough = scales.find((scale) => scale >= largest * ratio) ?? scales.at(-1);
  return { scale: enough, zoom: largest };
}

/** Calls `listener` when the screen's pixels change: another screen, or the browser's zoom. */
export function onPixelRatio(listener) {
  const query = matchMedia(`(resolution: ${window.devicePixelRatio}dppx)`);
  query.addEventListener("change", () => {
    onPixelRatio(listener);
    listener();
  }, { once: true });
}
