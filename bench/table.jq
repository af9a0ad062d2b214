# Prints what a benchmark program wrote with --benchmark_out_format=json as a table for people; see run.sh.

def median: sort | (.[(length - 1) / 2 | floor] + .[length / 2 | floor]) / 2;
def geometric_mean: (map(log) | add / length) | exp;

def spaces: if . > 0 then " " * . else "" end;
def pad_right(width): . + (width - length | spaces);
def pad_left(width): (width - length | spaces) + .;

# Three significant digits, as text: 1234 becomes "1234", 1 becomes "1.00".
def three_digits:
    if . <= 0 then "0"
    else ([2 - (log10 | floor), 0] | max) as $decimals
        | (. * pow(10; $decimals) | round | tostring) as $digits
        | ($decimals + 1 - ($digits | length) | if . > 0 then "0" * . else "" end) + $digits
        | if $decimals == 0 then . else .[:-$decimals] + "." + .[-$decimals:] end
    end;

# A rate: 1234567 becomes "1.23 M/s".
def rate:
    if . >= 1e9 then (. / 1e9 | three_digits) + " G/s"
    elif . >= 1e6 then (. / 1e6 | three_digits) + " M/s"
    elif . >= 1e3 then (. / 1e3 | three_digits) + " k/s"
    else three_digits + " /s"
    end;

# A ratio; below 1 its inverse too, which says how many times as fast: "0.2 (1/5)".
def ratio: three_digits + if . < 1 and . > 0 then " (1/" + (1 / . | three_digits) + ")" else "" end;

# The first column to the left, the others to the right; all as wide as their widest cell.
def print_table:
    (transpose | map(map(length // 0) | max)) as $widths
    | .[]
    | [to_entries[] | . as $cell | $cell.value
        | if $cell.key == 0 then pad_right($widths[0]) else pad_left($widths[$cell.key]) end]
    | join("  ");

(.context.executable | split("/") | last) as $program
| [.benchmarks[] | select(.run_type == "iteration")]
| (map(keys_unsorted) | add // [] | map(select(startswith("x_"))) | unique) as $counters
| map(select(.error_occurred)) as $errors
| [map(select(.error_occurred | not))
    | group_by([.family_index, .per_family_instance_index])[]
    | . as $runs
    | {
        name: ($runs[0].run_name | rtrimstr("/manual_time") | rtrimstr("/real_time") | sub("/iterations:[0-9]+"; "")),
        rate: ([$runs[] | .items_per_second // .bytes_per_second // empty] | if length > 0 then median else null end),
        ratios: [$counters[] as $counter | [$runs[] | .[$counter] // empty] | if length > 0 then median else null end]
    }] as $rows
| (
    "",
    ([[$program, "rate", $counters[]]]
        + [$rows[] | [.name, (.rate | if . then rate else "" end), (.ratios[] | if . then ratio else "" end)]]
        + if ($counters | length) == 0 or ($rows | length) == 0 then [] else
            ([$rows[].ratios] | transpose | map(map(select(.)))) as $columns
            | [[""], ["geometric mean", "", ($columns[] | geometric_mean | ratio)],
               ["smallest", "", ($columns[] | min | ratio)],
               ["largest", "", ($columns[] | max | ratio)]]
          end
        | print_table),
    ($errors[] | "ERROR  " + .name + ": " + .error_message)
  )
